#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/ArbitraryValues.h"
#include "fuzz/Require.h"
#include "fuzz/SameValues.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {
namespace {

using fuzz::isSame;
using fuzz::require;

constexpr std::array words{"status",
                           "mode",
                           "override",
                           "keyboard",
                           "settings",
                           "watch",
                           "doctor",
                           "help",
                           "--help",
                           "--version",
                           "--json",
                           "list",
                           "set",
                           "clear",
                           "special",
                           "standard",
                           "toggle",
                           "follow",
                           "default",
                           "on",
                           "off",
                           "F5",
                           "Escape",
                           "none",
                           "rightOption",
                           "shortcut",
                           "showCapsLockIndicator",
                           "fnReplacementModifier",
                           "SUEnableAutomaticChecks",
                           "globalFnState",
                           "046d:c33f",
                           "05ac:0267",
                           "G Pro",
                           "Finder",
                           "com.apple.finder",
                           "/Applications/Finder.app",
                           ""};

/// Someone types anything behind `keyrow`, again and again, with a Keyrow or without.
class Terminal {
 public:
  explicit Terminal(FuzzedDataProvider& data) : data_{data} {
    // An event tap needs a thread, and has nothing to do with what is tried here.
    stage_.mac.faults.fail(PortCall::createEventTap, Faults::always);
    if (data_.ConsumeBool()) stage_.launchKeyrow();
    constexpr int enough = 8;
    for (int count = 0; count < enough && data_.remaining_bytes() > 0; ++count) {
      if (data_.ConsumeIntegralInRange(0, 3) == 0) storeAnything();
      type();
    }
  }

 private:
  void storeAnything() {
    const auto key = data_.PickValueInArray(settingsKey::all);
    stage_.mac.defaults.setValue(stage_.keyrowDomain(), key, fuzz::arbitraryOptionalValue(data_));
    pass(std::chrono::seconds{1});
  }

  std::string arbitraryWord() {
    return data_.ConsumeIntegralInRange(0, 4) > 0 ? std::string{data_.PickValueInArray(words)}
                                                  : fuzz::arbitraryString(data_);
  }

  void type() {
    std::vector<std::string> arguments;
    for (auto count = data_.ConsumeIntegralInRange(0, 5); count > 0; --count) {
      arguments.push_back(arbitraryWord());
    }
    const auto before = stored();
    stage_.beginAction();
    stage_.startTool(/*isRoot=*/false).run(arguments);
    pass(std::chrono::seconds{2});

    const auto status = stage_.toolExitStatus();
    const bool isWatch = !arguments.empty() && arguments.front() == "watch" && !status;
    require(isWatch || (status && *status >= 0 && *status <= 2),
            "every command ends, but for one that watches");
    if (status && *status != tool::exitStatus::done) {
      require(isSame(before, stored()), "a command that fails changes nothing");
      require(hasPrinted("error"), "a command that fails says why");
    }
    checkOutput();
    stage_.interruptTools();
  }

  /// But for what Keyrow notes for itself, whatever is typed.
  PropertyDictionary stored() const {
    return fuzz::without(stage_.mac.defaults.domain(stage_.keyrowDomain()),
                         {std::string{settingsKey::lastSeenFnStatePreference}});
  }

  bool hasPrinted(std::string_view kind) const {
    return std::ranges::any_of(stage_.recentTimeline(), [kind](const TimelineEvent& event) {
      return event.kind == TimelineEvent::Kind::output && event.terms.front() == kind;
    });
  }

  void checkOutput() const {
    for (const auto& event : stage_.recentTimeline()) {
      if (event.kind == TimelineEvent::Kind::output) checkLine(event.terms.back());
    }
  }

  /// A line as the timeline shows it: quoted, with a backslash before what is no character to show.
  static void checkLine(std::string_view quotedLine) {
    for (std::size_t place = 0; place < quotedLine.size(); ++place) {
      if (quotedLine[place] != '\\') continue;
      const char escaped = quotedLine[++place];
      require(escaped == '\\' || escaped == '"', "a line is one line, of characters to show");
    }
  }

  void pass(std::chrono::nanoseconds time) { stage_.mac.scheduler.advance(time); }

  FuzzedDataProvider& data_;
  Stage stage_;
};

}  // namespace
}  // namespace keyrow::sim

/// Whatever is typed, the command comes to an end, says what was wrong, and changes nothing then.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data{bytes, size};
  keyrow::sim::Terminal{data};
  return 0;
}
