#include "sim/machine/EventTapServer.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace keyrow::sim {

namespace {

/// How long the system lets keys wait for a tap.
constexpr std::chrono::seconds longestStall{30};

}  // namespace

void EventTapServer::insert(std::shared_ptr<ServedTap> tap) {
  const std::scoped_lock guard{mutex_};
  taps_.insert(taps_.begin(), std::move(tap));
  ++changeCount_;
  tell();
}

void EventTapServer::setEnabled(ServedTap& tap, bool enabled) {
  const std::scoped_lock guard{mutex_};
  enabled = enabled && tap.isValid;
  if (std::exchange(tap.isEnabled, enabled) != enabled) ++changeCount_;
  if (!enabled) letGo(tap);
  tell();
}

bool EventTapServer::isEnabled(const ServedTap& tap) const {
  const std::scoped_lock guard{mutex_};
  return tap.isEnabled;
}

void EventTapServer::serve(ServedTap& tap, std::shared_ptr<SimulatedRunLoop> runLoop) {
  const std::scoped_lock guard{mutex_};
  tap.runLoop = std::move(runLoop);
}

void EventTapServer::invalidate(ServedTap& tap) {
  const std::scoped_lock guard{mutex_};
  tap.isValid = false;
  tap.isEnabled = false;
  ++changeCount_;
  letGo(tap);
  std::erase_if(taps_, [&tap](const auto& one) { return one.get() == &tap; });
  tell();
}

std::optional<bool> EventTapServer::pass(const Taps& taps, std::uint32_t type,
                                         const KeyEvent& event) {
  for (const auto& tap : taps) {
    std::shared_ptr<SimulatedRunLoop> runLoop;
    {
      const std::scoped_lock guard{mutex_};
      const bool wanted = type < 64 && (tap->eventsOfInterest >> type & 1) != 0;
      if (!tap->isEnabled || !wanted) continue;
      // Nor does a key overtake those that wait.
      if (!use_.isProcessTrusted || !tap->stalledKeys.empty()) {
        stall(tap, type, event);
        return std::nullopt;
      }
      runLoop = tap->runLoop;
    }
    if (!runLoop) continue;
    auto verdict = TapVerdict::pass;
    const bool wasHandled =
        runLoop->perform([&] { verdict = tap->callback->tapReceived(type, event); });
    if (wasHandled && verdict == TapVerdict::swallow) return false;
  }
  return true;
}

void EventTapServer::disableAll(std::uint32_t announcedType) {
  for (const auto& tap : valid()) disable(*tap, announcedType);
}

void EventTapServer::disable(ServedTap& tap, std::uint32_t announcedType) {
  std::shared_ptr<SimulatedRunLoop> runLoop;
  {
    const std::scoped_lock guard{mutex_};
    tap.isEnabled = false;
    ++changeCount_;
    letGo(tap);
    tell();
    runLoop = tap.runLoop;
  }
  if (announcedType == 0 || !runLoop) return;
  runLoop->perform([&] { tap.callback->tapReceived(announcedType, {}); });
}

void EventTapServer::announceStop(const SimulatedRunLoop& runLoop) {
  for (const auto& tap : valid()) {
    std::shared_ptr<SimulatedRunLoop> served;
    {
      const std::scoped_lock guard{mutex_};
      if (tap->isEnabled) served = tap->runLoop;
    }
    if (served.get() != &runLoop) continue;
    served->perform([&] { tap->callback->tapReceived(keyEventType::tapDisabledByUserInput, {}); });
  }
}

int EventTapServer::enabledCount() const {
  const std::scoped_lock guard{mutex_};
  return static_cast<int>(
      std::ranges::count_if(taps_, [](const auto& tap) { return tap->isEnabled; }));
}

std::size_t EventTapServer::stalledCount() const {
  const std::scoped_lock guard{mutex_};
  std::size_t count = 0;
  for (const auto& tap : taps_) count += tap->stalledKeys.size();
  return count;
}

std::string EventTapServer::state() const {
  const std::scoped_lock guard{mutex_};
  return currentState();
}

void EventTapServer::stall(const std::shared_ptr<ServedTap>& tap, std::uint32_t type,
                           const KeyEvent& event) {
  tap->stalledKeys.push_back({type, event});
  if (tap->stalledKeys.size() > 1) return;
  ++changeCount_;
  tap->timeout = use_.scheduler.schedule(
      longestStall, [this, tap] { disable(*tap, keyEventType::tapDisabledByTimeout); });
  tell();
}

void EventTapServer::letGo(ServedTap& tap) {
  if (tap.stalledKeys.empty()) return;
  use_.scheduler.cancel(tap.timeout);
  const auto place =
      std::ranges::find_if(taps_, [&tap](const auto& one) { return one.get() == &tap; });
  // Not now: whoever disables the tap is in the middle of something.
  use_.scheduler.schedule(
      {}, [this, keys = std::exchange(tap.stalledKeys, {}), rest = Taps{place, taps_.end()}] {
        for (const auto& key : keys) {
          const auto getsThrough = pass(rest, key.type, key.event);
          if (getsThrough) use_.decided(key.type, key.event, *getsThrough);
        }
      });
}

std::string EventTapServer::currentState() const {
  if (std::ranges::any_of(taps_, [](const auto& tap) { return !tap->stalledKeys.empty(); })) {
    return "stalled";
  }
  const bool works = std::ranges::any_of(taps_, [](const auto& tap) { return tap->isEnabled; });
  return works ? "working" : "missing";
}

void EventTapServer::tell() {
  auto before = std::exchange(toldState_, currentState());
  use_.timeline.addChange(TimelineEvent::Kind::tap, {}, std::move(before), toldState_);
}

EventTapServer::Taps EventTapServer::valid() const {
  const std::scoped_lock guard{mutex_};
  return taps_;
}

}  // namespace keyrow::sim
