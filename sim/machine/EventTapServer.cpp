#include "sim/machine/EventTapServer.h"

#include <algorithm>
#include <utility>

namespace keyrow::sim {

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
  std::erase_if(taps_, [&tap](const auto& one) { return one.get() == &tap; });
  tell();
}

bool EventTapServer::post(std::uint32_t type, const KeyEvent& event) {
  for (const auto& tap : valid()) {
    std::shared_ptr<SimulatedRunLoop> runLoop;
    {
      const std::scoped_lock guard{mutex_};
      const bool wanted = type < 64 && (tap->eventsOfInterest >> type & 1) != 0;
      if (!tap->isEnabled || !wanted) continue;
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
  for (const auto& tap : valid()) {
    std::shared_ptr<SimulatedRunLoop> runLoop;
    {
      const std::scoped_lock guard{mutex_};
      tap->isEnabled = false;
      ++changeCount_;
      tell();
      runLoop = tap->runLoop;
    }
    if (announcedType == 0 || !runLoop) continue;
    runLoop->perform([&] { tap->callback->tapReceived(announcedType, {}); });
  }
}

int EventTapServer::enabledCount() const {
  const std::scoped_lock guard{mutex_};
  return static_cast<int>(
      std::ranges::count_if(taps_, [](const auto& tap) { return tap->isEnabled; }));
}

void EventTapServer::tell() {
  const bool works = std::ranges::any_of(taps_, [](const auto& tap) { return tap->isEnabled; });
  if (std::exchange(isWorking_, works) == works) return;
  timeline_.addChange(TimelineEvent::Kind::tap, {}, works ? "missing" : "working",
                      works ? "working" : "missing");
}

std::vector<std::shared_ptr<ServedTap>> EventTapServer::valid() const {
  const std::scoped_lock guard{mutex_};
  return taps_;
}

}  // namespace keyrow::sim
