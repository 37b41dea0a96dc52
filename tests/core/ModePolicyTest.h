#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/KeyboardDeviceSource.h"
#include "core/ModePolicy.h"
#include "tests/core/CoreTest.h"

namespace keyrow::sim {

/// A mode policy whose every visible deed is written down, in its order.
class ModePolicyTest : public CoreTest {
 protected:
  ModePolicyTest() {
    mac.timeline.setListener([this](const TimelineEvent& event) {
      if (isDeed(event)) happenings.push_back(shortText(event));
    });
  }

  ModePolicy& policy() { return shown_->policy; }

  /// What has happened since the test began or since `beginHere`, one or two words for
  /// each deed: "hardware standard", "store globalFnState", "preference", "log",
  /// "fault find-service", "show standard", "show local".
  std::vector<std::string> happenings;

  /// Goes on with a new process, which has no mode yet.
  void restart() {
    shown_.reset();
    process = std::make_unique<SimulatedProcess>(mac, 502);
    shown_.emplace(*process, presenter_);
  }

  /// Ends the preparations of a test: forgets what they made happen.
  void beginHere() {
    happenings.clear();
    writesBefore_ = mac.defaults.writeCount();
    hardwareWritesBefore_ = mac.hid.writtenValues().size();
    linesBefore_ = mac.log.lines().size();
  }

  /// How often settings were written, also with the value that they had.
  int settingsWrites() const { return mac.defaults.writeCount() - writesBefore_; }

  /// The values that were sent to the hardware, also if it had them.
  std::vector<std::string> sentModes() const {
    auto values = writtenValues();
    values.erase(values.begin(), values.begin() + std::ptrdiff_t(hardwareWritesBefore_));
    return values;
  }

  /// The lines that were logged, as "category level: message".
  std::vector<std::string> newLogLines() const {
    auto lines = logLines();
    lines.erase(lines.begin(), lines.begin() + std::ptrdiff_t(linesBefore_));
    return lines;
  }

  void bringToFront(std::optional<std::string> bundleIdentifier) {
    mac.applications.activate(std::move(bundleIdentifier));
  }

  /// Brings TextEdit to the front, with an override that is in force.
  void applyOverrideOfTextEdit(FnState state) {
    store("localFnState", PropertyDictionary{{textEdit, rawValue(state)}});
    bringToFront(textEdit);
    policy().applyStoredFnState();
    ASSERT_TRUE(policy().isLocalScopeActive());
  }

 private:
  /// Writes down what it is told, and checks that the policy knows it already.
  class Presenter final : public ModePresenter {
   public:
    explicit Presenter(ModePolicyTest& test) : test_{test} {}

    void fnStateDidChange(FnState state) override {
      test_.happenings.emplace_back(state == FnState::standard ? "show standard" : "show special");
      EXPECT_EQ(test_.policy().lastKnownFnState(), state);
    }
    void scopeDidChange(bool isLocalScopeActive) override {
      test_.happenings.emplace_back(isLocalScopeActive ? "show local" : "show global");
      EXPECT_EQ(test_.policy().isLocalScopeActive(), isLocalScopeActive);
    }
    void commandWorked() override {}

   private:
    ModePolicyTest& test_;
  };

  /// What Keyrow keeps for itself is left out.
  static bool isDeed(const TimelineEvent& event) {
    return event.kind != TimelineEvent::Kind::defaults ||
           event.terms.front() != settingsKey::lastSeenFnStatePreference;
  }

  static std::string shortText(const TimelineEvent& event) {
    switch (event.kind) {
      case TimelineEvent::Kind::hardware:
        return "hardware " + event.terms.back();
      case TimelineEvent::Kind::defaults:
        return "store " + event.terms.front();
      case TimelineEvent::Kind::override_:
        return "store localFnState";
      case TimelineEvent::Kind::fault:
        return "fault " + event.terms.front();
      case TimelineEvent::Kind::preference:
        return "preference";
      case TimelineEvent::Kind::log:
        return "log";
      default:
        return textOf(event);
    }
  }

  /// The policy of a process that is shown by the test instead of a status item.
  struct ShownHere {
    ShownHere(SimulatedProcess& process, ModePresenter& presenter)
        : storedFnStates{process.platform().userDefaults},
          policy{{.fnStateController = process.keyrow().fnStateController(),
                  .storedFnStates = storedFnStates,
                  .settings = process.keyrow().settings(),
                  .workspace = process.platform().workspace,
                  .mainQueue = process.platform().mainQueue,
                  .clock = process.platform().clock,
                  .presenter = presenter,
                  .stateLog = process.keyrow().diagnosticsLog().logger(LogCategory::state),
                  .appLog = process.keyrow().diagnosticsLog().logger(LogCategory::app)}} {}

    StoredFnStates storedFnStates;
    ModePolicy policy;
  };

  Presenter presenter_{*this};
  std::optional<ShownHere> shown_{std::in_place, *process, presenter_};
  int writesBefore_ = 0;
  std::size_t hardwareWritesBefore_ = 0;
  std::size_t linesBefore_ = 0;
};

/// The keyboard that the tests issue commands from.
inline const KeyboardDeviceSource& externalKeyboard() {
  static const auto keyboard = [] {
    KeyboardDeviceSource source;
    source.kind = KeyboardDeviceKind::external;
    source.transport = "USB";
    source.manufacturer = "Logitech";
    source.product = "G Pro";
    return source;
  }();
  return keyboard;
}

inline constexpr auto overrideIsNotGlobal =
    "state notice: The keyboard holds an app override's mode, which does not become the global "
    "function key mode.";

inline constexpr auto readFailure =
    "state error: Failed to read the current function key mode from hardware: Failed to read the "
    "function key mode.";

}  // namespace keyrow::sim
