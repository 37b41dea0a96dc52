#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <string>
#include <vector>

#include "app/AppDelegate.h"
#include "tests/app/AppDelegateFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

constexpr auto takeover = "app.keyrow.Keyrow.instanceTakeover";

class AppDelegateOrderTest : public AppDelegateFixture {
 protected:
  void SetUp() override {
    AppDelegateFixture::SetUp();
    storeOverride("com.example.gone", FnState::standard);
  }

  /// What was called after the first call of that name, and before the next of the other.
  static std::vector<std::string> between(const std::vector<std::string>& calls,
                                          const std::string& first, const std::string& next) {
    const auto begin = std::ranges::find(calls, first);
    if (begin == calls.end()) return {"no " + first};
    const auto end = std::find(begin, calls.end(), next);
    if (end == calls.end()) return {"no " + next + " after " + first};
    return {std::next(begin), end};
  }
};

TEST_F(AppDelegateOrderTest, LaunchesInThisOrder) {
  mac.trace.start();
  process->launch();
  EXPECT_THAT(
      mac.trace.take(),
      ElementsAre(
          std::string{"observe "} + takeover, "list running applications", "create main menu",
          "create status item",
          // The mode, for the item.
          "find-service", "read-service-property",
          // The panes are measured: the first shows the permissions, and follows every look at one,
          // and both follow what can be switched elsewhere.
          "is process trusted", "check input monitoring",
          "observe NSApplicationDidBecomeActiveNotification", "observe SettingWasSet",
          "observe PermissionsWereLookedAt", "observe NSApplicationDidBecomeActiveNotification",
          "observe SettingWasSet", "create settings window", "start updater",
          // An override whose application is not installed.
          "find-application",
          // Whether anything has to be asked, and whether a manager may be opened.
          "check input monitoring", "is process trusted", "check input monitoring",
          "check input monitoring", "is process trusted", "check input monitoring",
          "open-hid-manager",
          // The prompt, then the tap.
          "is process trusted", "is process trusted", "check input monitoring", "write-defaults",
          "observe com.apple.accessibility.api", "is process trusted", "is process trusted",
          "check input monitoring", "create-event-tap", "create-run-loop-source",
          "start thread app.keyrow.Keyrow.KeyboardEventTap", "enable-event-tap",
          "observe activation", "observe wake", "observe sleep", "observe session leaving",
          "observe session coming", "observe CapsLockIndicatorSettingDidChange",
          "observe NSApplicationDidBecomeActiveNotification", "observe AccessibilityTrustDidChange",
          // From now on a Keyrow that it does not know is a newer one.
          "list running applications",
          // The mode is applied.
          "frontmost-application", "synchronize-preferences", "copy-preference", "write-defaults",
          "frontmost-application", "find-service", "open-connection", "set-hid-parameter",
          "observe app.keyrow.Keyrow.request"));
}

TEST_F(AppDelegateOrderTest, AsksForThePermissionBeforeItStartsTheTap) {
  mac.isAccessibilityGranted = false;
  mac.trace.start();
  process->launch();
  EXPECT_THAT(
      between(mac.trace.take(), "open-hid-manager", "observe activation"),
      ElementsAre("is process trusted", "is process trusted", "activate all windows",
                  "activate ignoring other apps", "bring settings window to the front",
                  "prompt for trust", "write-defaults", "observe com.apple.accessibility.api",
                  "is process trusted", "is process trusted"));
}

TEST_F(AppDelegateOrderTest, TakesOverBeforeItShowsAnything) {
  SimulatedProcess older{mac, 400};
  older.launch();
  mac.trace.start();
  process->launch();
  const auto calls = mac.trace.take();
  const auto position = [&](const std::string& call) {
    return std::ranges::find(calls, call) - calls.begin();
  };
  EXPECT_TRUE(older.hasEnded());
  EXPECT_LT(position(std::string{"post "} + takeover), position("terminate 400"));
  EXPECT_LT(position("terminate 400"), position("create status item"));
  EXPECT_LT(position("create status item"), position("create settings window"));
}

TEST_F(AppDelegateOrderTest, TerminatesInThisOrder) {
  process->launch();
  mac.scheduler.advance(std::chrono::minutes{1});
  mac.trace.start();
  process->terminate();
  EXPECT_THAT(mac.trace.take(),
              ElementsAre("stop observing app.keyrow.Keyrow.request",
                          // What was chosen elsewhere is adopted, and the mode restored.
                          "synchronize-preferences", "copy-preference", "find-service",
                          "read-service-property", "find-service", "open-connection",
                          "set-hid-parameter", "stop observing CapsLockIndicatorSettingDidChange",
                          "stop observing com.apple.accessibility.api", "disable event tap",
                          "invalidate event tap", "close-hid-manager",
                          "stop observing NSApplicationDidBecomeActiveNotification",
                          "stop observing AccessibilityTrustDidChange",
                          std::string{"stop observing "} + takeover,
                          // The override of an application that is not installed.
                          "find-application", "write-defaults",
                          // The mode is mirrored.
                          "synchronize-preferences", "write-defaults"));
}

}  // namespace
}  // namespace keyrow::sim
