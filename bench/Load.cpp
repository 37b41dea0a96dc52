#include <unistd.h>

#include <array>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <string_view>
#include <thread>

#include "bench/LatencyHistogram.h"
#include "bench/Memory.h"
#include "platform/HidManagers.h"
#include "sim/machine/SimulatedMac.h"
#include "sim/ports/SimulatedProcess.h"

namespace keyrow::sim {
namespace {

using Clock = std::chrono::steady_clock;

struct TypedKey {
  std::uint32_t type;
  std::uint16_t keyCode;
  std::uint64_t flags = 0;
};

constexpr std::uint16_t keyF7 = 98;

/// What is typed, over and over: mostly text. The top-row keys are the external keyboard's.
constexpr std::array<TypedKey, 16> typedKeys{{
    {keyEventType::keyDown, 0},
    {keyEventType::keyUp, 0},
    {keyEventType::keyDown, 1},
    {keyEventType::keyUp, 1},
    {keyEventType::keyDown, keyF7},
    {keyEventType::keyUp, keyF7},
    {keyEventType::flagsChanged, 56, keyEventFlag::shift},
    {keyEventType::keyDown, 2, keyEventFlag::shift},
    {keyEventType::keyUp, 2, keyEventFlag::shift},
    {keyEventType::flagsChanged, 56},
    {keyEventType::keyDown, 49},
    {keyEventType::keyUp, 49},
    {keyEventType::keyDown, 36},
    {keyEventType::keyUp, 36},
    {keyEventType::keyUp, escapeKeyCode, keyEventFlag::secondaryFn},
    {keyEventType::keyUp, 3},
}};

/// Tells on a terminal how far it is.
class Progress {
 public:
  explicit Progress(std::uint64_t total) : total_{total} {}

  void show(std::uint64_t done) {
    const auto now = Clock::now();
    if (!isTerminal_ || now - shown_ < std::chrono::milliseconds{200}) return;
    shown_ = now;
    const std::chrono::duration<double> elapsed = now - start_;
    std::cerr << '\r' << done << " of " << total_ << " events, "
              << static_cast<std::uint64_t>(static_cast<double>(done) / elapsed.count())
              << " a second\033[K" << std::flush;
  }

  void finish() const {
    if (isTerminal_) std::cerr << "\r\033[K";
  }

 private:
  const std::uint64_t total_;
  const bool isTerminal_ = isatty(STDERR_FILENO) != 0;
  const Clock::time_point start_ = Clock::now();
  Clock::time_point shown_ = start_;
};

/// Keyrow at work, and more of it than people can make: a thread that stands for the event
/// tap's worker hands over events as fast as it can, another one asks whatever any thread may
/// ask, and the main thread changes settings, delivers inputs and serves its queue.
class Load {
 public:
  explicit Load(std::uint64_t eventCount) : eventCount_{eventCount} {
    mac_.applications.install("com.apple.TextEdit");
    process_.launch();
    mac_.applications.activate("com.apple.TextEdit");
    settings_.set(BooleanSetting::applyFnModeToExternalFunctionKeys, true);
    serveMainThread();
  }

  /// Hands over all events; to be called in the main thread.
  void run() {
    Progress progress{eventCount_};
    const auto start = Clock::now();
    std::thread asker{[this] { ask(); }};
    std::thread worker{[this] { handOverEvents(); }};
    while (handled_ < eventCount_) {
      serveMainThread();
      if (!earlyMemory_ && handled_ >= eventCount_ / 10) earlyMemory_ = currentMemory();
      progress.show(handled_);
    }
    worker.join();
    duration_ = Clock::now() - start;
    serveMainThread();
    finalMemory_ = currentMemory();
    asker.join();
    progress.finish();
  }

  /// Prints what was measured; whether all is as it should be.
  bool report() const {
    constexpr double megabyte = 1'000'000;
    const auto perSecond = static_cast<double>(eventCount_) / duration_.count();
    std::cout << std::fixed << std::setprecision(2) << eventCount_ << " events in "
              << duration_.count() << " s, " << static_cast<std::uint64_t>(perSecond)
              << " a second; " << translated_ << " of them translated\n"
              << rounds_ << " changes of settings, " << 2 * rounds_ << " inputs, " << questions_
              << " questions by another thread meanwhile\n"
              << "callback: p50 " << latencies_.perMille(500) << " ns, p99 "
              << latencies_.perMille(990) << " ns, p99.9 " << latencies_.perMille(999)
              << " ns, at most " << latencies_.maximum() << " ns\n"
              << "memory: at most " << static_cast<double>(peakMemory()) / megabyte << " MB";
    bool isRight = true;
    if (earlyMemory_ && finalMemory_) {
      const auto early = static_cast<double>(*earlyMemory_) / megabyte;
      const auto late = static_cast<double>(*finalMemory_) / megabyte;
      std::cout << "; " << early << " MB after a tenth of the events, " << late << " MB at the end";
#ifndef KEYROW_SANITIZED
      isRight = late - early <= 1;
#endif
    }
    std::cout << '\n';
    if (!isRight) std::cerr << "keyrow-load: the memory grows\n";
    if (wrongVerdicts_ > 0) {
      std::cerr << "keyrow-load: " << wrongVerdicts_ << " events got the wrong verdict\n";
      isRight = false;
    }
    if (translated_ == 0 || posted_ != translated_) {
      std::cerr << "keyrow-load: " << posted_ << " media keys came of " << translated_
                << " translated keys\n";
      isRight = false;
    }
    return isRight;
  }

 private:
  void handOverEvents() {
    const auto handler = process_.keyrow().makeKeyEventHandler();
    for (std::uint64_t number = 0; number < eventCount_; ++number) {
      awaitMainThread();
      const auto& key = typedKeys[number % typedKeys.size()];
      const bool isTopRow = key.keyCode == keyF7;
      const KeyEvent event{.timestamp = isTopRow ? externalTime_ : builtInTime_,
                           .flags = key.flags,
                           .keyCode = key.keyCode};
      const auto before = Clock::now();
      const auto verdict = handler->handleTappedEvent(key.type, event);
      const auto after = Clock::now();
      latencies_.add(static_cast<std::uint64_t>(
          std::chrono::duration_cast<std::chrono::nanoseconds>(after - before).count()));

      if (isTopRow) {
        if (verdict == TapVerdict::swallow) ++translated_;
      } else if (verdict == TapVerdict::swallow) {
        ++wrongVerdicts_;
      }
      handled_ = number + 1;
    }
  }

  /// Nobody types on and on while the whole Mac stands still, so neither does this.
  void awaitMainThread() const {
    constexpr std::uint64_t furthestAhead = 4'000;
    while (handled_ - served_ > furthestAhead) std::this_thread::yield();
  }

  void ask() {
    auto& keyrow = process_.keyrow();
    while (handled_ < eventCount_) {
      if (const auto source = keyrow.keyboardSourceMonitor().source(externalTime_)) {
        keyrow.keyboardModes().of(*source);
      }
      keyrow.keySettings().current();
      settings_.localToggleShortcut();
      settings_.fnReplacementModifier();
      settings_.isOn(BooleanSetting::enhancedDiagnosticsEnabled);
      keyrow.fnStateController().readFnState();
      ++questions_;
    }
  }

  void serveMainThread() {
    const std::uint64_t handledBefore = handled_;
    deliverInput(externalKeyboard_, externalTime_);
    deliverInput(builtInKeyboard_, builtInTime_);
    changeASetting();
    mac_.scheduler.runReady();
    posted_ += mac_.systemDefinedEvents.size();
    mac_.systemDefinedEvents.clear();
    mac_.log.clear();
    mac_.timeline.clear();
    served_ = handledBefore;
  }

  /// Some keyboards send an input every millisecond.
  void deliverInput(const std::shared_ptr<const SimulatedKeyboard>& keyboard,
                    std::atomic<std::uint64_t>& time) {
    mac_.scheduler.advance(std::chrono::milliseconds{1});
    const auto now = mac_.machAbsoluteTime();
    mac_.keyboards.deliver({keyboard, hidPage::keyboardOrKeypad, now});
    time = now;
  }

  void changeASetting() {
    const bool isOn = rounds_ / 7 % 2 == 0;
    switch (rounds_++ % 7) {
      case 0:
        settings_.set(BooleanSetting::applyFnModeToExternalFunctionKeys, false);
        break;
      case 1:
        settings_.set(BooleanSetting::applyFnModeToExternalFunctionKeys, true);
        break;
      case 2:
        settings_.set(BooleanSetting::enhancedDiagnosticsEnabled, isOn);
        break;
      case 3:
        settings_.setFnReplacementModifier(isOn ? std::optional{FnReplacementModifier::rightCommand}
                                                : std::nullopt);
        break;
      case 4:
        // As another process does it, with `defaults write`.
        mac_.defaults.setValue(appIdentifier, settingsKey::localToggleShortcutKeyCode,
                               isOn ? 1 : 2);
        break;
      case 5:
        mac_.defaults.setValue(appIdentifier, settingsKey::keyboardFnStates,
                               PropertyDictionary{{"046d:c33f", isOn ? 1 : 0}});
        break;
      default:
        settings_.set(BooleanSetting::showCapsLockIndicator, isOn);
        break;
    }
  }

  const std::uint64_t eventCount_;
  SimulatedMac mac_;
  SimulatedProcess process_{mac_, 501};
  AppSettings& settings_ = process_.keyrow().settings();
  const std::shared_ptr<const SimulatedKeyboard> builtInKeyboard_ =
      std::make_shared<const SimulatedKeyboard>(SimulatedKeyboard{
          .registryID = 1, .properties = {{"Product", "Internal"}, {"Built-In", true}}});
  const std::shared_ptr<const SimulatedKeyboard> externalKeyboard_ =
      std::make_shared<const SimulatedKeyboard>(
          SimulatedKeyboard{.registryID = 2,
                            .properties = {{"Product", "Desk"},
                                           {"Transport", "USB"},
                                           {"VendorID", 0x046D},
                                           {"ProductID", 0xC33F}}});

  std::uint64_t rounds_ = 0;
  /// How many events of media keys came of the translated ones.
  std::uint64_t posted_ = 0;
  std::chrono::duration<double> duration_{};
  std::optional<std::uint64_t> earlyMemory_;
  std::optional<std::uint64_t> finalMemory_;

  // What the other threads find out; for the main thread when they have ended.
  LatencyHistogram latencies_;
  std::uint64_t translated_ = 0;
  std::uint64_t wrongVerdicts_ = 0;
  std::uint64_t questions_ = 0;

  /// When each keyboard sent its latest input.
  std::atomic<std::uint64_t> builtInTime_{0};
  std::atomic<std::uint64_t> externalTime_{0};
  std::atomic<std::uint64_t> handled_{0};
  /// How many had been handled when the main thread began what it has finished last.
  std::atomic<std::uint64_t> served_{0};
};

}  // namespace
}  // namespace keyrow::sim

int main(int argc, char** argv) {
  std::uint64_t eventCount = 10'000'000;
  if (argc > 1) {
    const std::string_view text{argv[1]};
    const auto [end, error] = std::from_chars(text.begin(), text.end(), eventCount);
    if (argc > 2 || error != std::errc{} || end != text.end() || eventCount == 0) {
      std::cerr << "usage: keyrow-load [EVENTS]\n";
      return 2;
    }
  }
  keyrow::sim::Load load{eventCount};
  load.run();
  return load.report() ? EXIT_SUCCESS : EXIT_FAILURE;
}
