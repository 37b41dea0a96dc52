#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <string>

#include "app/AppDelegate.h"
#include "tests/app/AppDelegateFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::Not;

using namespace std::chrono_literals;

constexpr auto prompt = "macOS asks whether Keyrow may control this computer";

class AppDelegatePermissionTest : public AppDelegateFixture {
 protected:
  std::vector<std::string> seen() const {
    std::vector<std::string> texts;
    for (const auto& event : mac.timeline.events()) {
      if (event.kind == TimelineEvent::Kind::screen) {
        // Without its quotation marks.
        const auto& text = event.terms.front();
        texts.push_back(text.substr(1, text.size() - 2));
      }
    }
    return texts;
  }

  void becomeActive() {
    process->platform().notificationCenter.post("NSApplicationDidBecomeActiveNotification");
  }

  /// Where no tap can be made.
  void launchUntilAlert() {
    process->launch();
    mac.scheduler.advance(8s);
    ASSERT_EQ(mac.screen.alerts().size(), 1U);
  }

  bool isTapWorking() const { return mac.eventTaps.enabledCount() == 1; }
};

TEST_F(AppDelegatePermissionTest, WithThePermissionNothingIsShownAndItIsNoted) {
  process->launch();
  EXPECT_THAT(seen(), ElementsAre());
  EXPECT_EQ(stored("hasPromptedAccessibility"), PropertyValue{true});
  EXPECT_TRUE(isTapWorking());
}

TEST_F(AppDelegatePermissionTest, WithoutItTheWindowIsShownAndTheSystemAsks) {
  mac.isAccessibilityGranted = false;
  process->launch();
  EXPECT_THAT(seen(), ElementsAre("settings window, General", prompt));
  EXPECT_EQ(stored("hasPromptedAccessibility"), PropertyValue{true});
  EXPECT_EQ(process->settingsWindow().broughtToFrontCount(), 1);
  mac.scheduler.runReady();
  EXPECT_EQ(process->settingsWindow().broughtToFrontCount(), 2);
  EXPECT_FALSE(isTapWorking());
}

TEST_F(AppDelegatePermissionTest, TheSystemAsksOnceInALifeTime) {
  mac.isAccessibilityGranted = false;
  store("hasPromptedAccessibility", true);
  process->launch();
  EXPECT_THAT(seen(), ElementsAre("settings window, General"));
}

TEST_F(AppDelegatePermissionTest, GrantedWhileItRunsTheTapStartsWhenKeyrowBecomesActive) {
  mac.isAccessibilityGranted = false;
  process->launch();
  becomeActive();
  EXPECT_FALSE(isTapWorking());
  mac.isAccessibilityGranted = true;
  EXPECT_FALSE(isTapWorking());
  becomeActive();
  EXPECT_TRUE(isTapWorking());
  EXPECT_THAT(mac.screen.alerts(), ElementsAre());
}

TEST_F(AppDelegatePermissionTest, ATapThatRunsIsNotStartedAgain) {
  process->launch();
  mac.trace.start();
  becomeActive();
  // The settings window looks at the permissions, then who keeps the tap, and then the monitors;
  // each time the window looks as well.
  EXPECT_THAT(
      mac.trace.take(),
      ElementsAre("is process trusted", "check input monitoring",                            //
                  "is process trusted", "is process trusted", "check input monitoring",      //
                  "check input monitoring", "is process trusted", "check input monitoring",  //
                  "check input monitoring", "is process trusted", "check input monitoring"));
}

TEST_F(AppDelegatePermissionTest, ARefusedTapAlertsOnceUntilItHasWorked) {
  mac.faults.fail(PortCall::createEventTap, Faults::always);
  launchUntilAlert();
  EXPECT_TRUE(mac.screen.answerAlert("OK"));
  becomeActive();
  becomeActive();
  mac.scheduler.runReady();
  EXPECT_THAT(
      mac.screen.alerts(),
      ElementsAre(
          "Keyrow could not start keyboard monitoring\n"
          "Keyrow may still be missing Input Monitoring, or macOS may not have applied its "
          "permissions "
          "yet. Try reopening Keyrow, or remove and re-add Keyrow in System Settings > Privacy & "
          "Security > Accessibility and Input Monitoring.\n[Open Accessibility Settings]\n[OK]"));
  EXPECT_THAT(mac.screen.openedURLs(), ElementsAre());
  mac.faults.clear();
  becomeActive();
  EXPECT_TRUE(isTapWorking());
  EXPECT_EQ(mac.screen.alerts().size(), 1U);
}

// One that is open still says what is to be said.
TEST_F(AppDelegatePermissionTest, NoAlertIsPutOnTopOfTheLastOne) {
  mac.faults.fail(PortCall::createEventTap, Faults::always);
  launchUntilAlert();
  mac.faults.clear();
  becomeActive();
  EXPECT_TRUE(isTapWorking());
  mac.faults.fail(PortCall::enableEventTap, 1);
  mac.faults.fail(PortCall::createEventTap, Faults::always);
  mac.eventTaps.disableAll(keyEventType::tapDisabledByUserInput);
  mac.scheduler.advance(8s);
  EXPECT_EQ(mac.screen.alerts().size(), 1U);
  EXPECT_TRUE(mac.screen.answerAlert("OK"));
  mac.applications.activate(safari);
  mac.scheduler.runReady();
  EXPECT_EQ(mac.screen.alerts().size(), 2U);
}

// By the time that the run loop gets to it, nothing may be left to say.
TEST_F(AppDelegatePermissionTest, AnAlertThatComesTooLateStaysAway) {
  mac.faults.fail(PortCall::createEventTap, Faults::always);
  process->launch();
  process->statusItem().click(ClickEvent::rightMouseDown);
  ASSERT_NE(process->statusItem().menu(), nullptr);
  mac.scheduler.advance(8s);
  EXPECT_THAT(mac.screen.alerts(), ElementsAre());
  mac.faults.clear();
  mac.applications.activate(safari);
  EXPECT_TRUE(isTapWorking());
  process->statusItem().closeMenu();
  EXPECT_THAT(mac.screen.alerts(), ElementsAre());
}

// Though the process may live on for a moment.
TEST_F(AppDelegatePermissionTest, TerminationEndsEveryAttempt) {
  process->launch();
  for (const auto* ofState : {"looking", "failing", "resting"}) {
    if (ofState == std::string_view{"failing"}) {
      mac.faults.fail(PortCall::createEventTap, 1);
      keyrow().eventTapController().stopEventTap();
      mac.power.sleep();
      mac.power.wake();
      EXPECT_FALSE(isTapWorking());
    } else if (ofState == std::string_view{"resting"}) {
      for (int time = 0; time < 2; ++time) {
        mac.eventTaps.disableAll(keyEventType::tapDisabledByTimeout);
        mac.scheduler.runReady();
      }
    } else {
      mac.changeAccessibility(true, 0s, true);
      mac.scheduler.runReady();
    }
    keyrow().appDelegate().applicationWillTerminate();
    mac.trace.start();
    mac.scheduler.advance(1h);
    const auto calls = mac.trace.take();
    EXPECT_THAT(calls, Not(Contains("is process trusted"))) << ofState;
    EXPECT_THAT(calls, Not(Contains("create-event-tap"))) << ofState;
    process = std::make_unique<SimulatedProcess>(mac, 502);
    process->launch();
  }
}

TEST_F(AppDelegatePermissionTest, TheFirstButtonOpensTheSettings) {
  mac.faults.fail(PortCall::createEventTap, Faults::always);
  launchUntilAlert();
  EXPECT_TRUE(mac.screen.answerAlert("Open Accessibility Settings"));
  EXPECT_THAT(mac.screen.openedURLs(),
              ElementsAre("x-apple.systempreferences:com.apple.preference.security?Privacy_"
                          "Accessibility"));
}

TEST_F(AppDelegatePermissionTest, AURLThatDoesNotOpenIsFollowedByTheOther) {
  mac.faults.fail(PortCall::createEventTap, Faults::always);
  launchUntilAlert();
  mac.faults.fail(PortCall::openURL, 1);
  EXPECT_TRUE(mac.screen.answerAlert("Open Accessibility Settings"));
  EXPECT_THAT(mac.screen.openedURLs(),
              ElementsAre("x-apple.systempreferences:com.apple.settings.PrivacySecurity_"
                          "Accessibility"));
}

TEST_F(AppDelegatePermissionTest, WhenNeitherOpensNothingElseHappens) {
  mac.faults.fail(PortCall::createEventTap, Faults::always);
  launchUntilAlert();
  mac.faults.fail(PortCall::openURL, Faults::always);
  EXPECT_TRUE(mac.screen.answerAlert("Open Accessibility Settings"));
  EXPECT_THAT(mac.screen.openedURLs(), ElementsAre());
}

TEST_F(AppDelegatePermissionTest, OpeningKeyrowAgainShowsItsSettings) {
  process->launch();
  for (const bool hasVisibleWindows : {false, true}) {
    process->settingsWindow().close();
    EXPECT_TRUE(keyrow().appDelegate().applicationShouldHandleReopen(hasVisibleWindows));
    EXPECT_TRUE(process->settingsWindow().isVisible());
  }
  EXPECT_TRUE(keyrow().appDelegate().applicationSupportsSecureRestorableState());
}

TEST_F(AppDelegatePermissionTest, WakingUpLetsAStartedTapProveItself) {
  process->launch();
  mac.eventTaps.disableAll(0);
  mac.power.sleep();
  mac.power.wake();
  EXPECT_TRUE(isTapWorking());
  EXPECT_EQ(mac.openHandles.count("EventTap"), 1);
}

TEST_F(AppDelegatePermissionTest, WakingUpReplacesATapThatStaysDead) {
  process->launch();
  mac.eventTaps.disableAll(0);
  mac.faults.fail(PortCall::enableEventTap, 1);
  mac.power.sleep();
  mac.power.wake();
  EXPECT_TRUE(isTapWorking());
  keyrow().eventTapController().stopEventTap();
  EXPECT_FALSE(isTapWorking());
  process->simulatedPlatform().eventTaps.endThreads();
  EXPECT_EQ(mac.openHandles.count("EventTap") + mac.openHandles.count("thread"), 0);
}

TEST_F(AppDelegatePermissionTest, WakingUpSaysWhenTheTapCannotBeReplaced) {
  process->launch();
  mac.eventTaps.disableAll(0);
  mac.faults.fail(PortCall::enableEventTap, 1);
  mac.faults.fail(PortCall::createEventTap, 1);
  mac.power.sleep();
  mac.power.wake();
  EXPECT_FALSE(isTapWorking());
  EXPECT_THAT(logLines(), Contains("input error: Failed to create the keyboard event tap."));
  mac.scheduler.advance(500ms);
  EXPECT_TRUE(isTapWorking());
}

TEST_F(AppDelegatePermissionTest, WakingUpStartsTheTapThatMayBeThereNow) {
  mac.isAccessibilityGranted = false;
  process->launch();
  mac.isAccessibilityGranted = true;
  mac.power.sleep();
  mac.power.wake();
  EXPECT_TRUE(isTapWorking());
}

TEST_F(AppDelegatePermissionTest, FallingAsleepMirrorsTheGlobalModeUnderAnOverride) {
  setPreference(true);
  process = std::make_unique<SimulatedProcess>(mac, 502);
  storeOverride(textEdit, FnState::standard);
  launchWithFrontmost(textEdit);
  mac.power.sleep();
  EXPECT_EQ(preference(), PropertyValue{false});
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_THAT(logLines(),
              ElementsAre("state info: Persisted the global function key mode to NSUserDefaults "
                          "for system sleep: standardFunctionKeys=false"));
}

TEST_F(AppDelegatePermissionTest, WakingUpAppliesTheOverrideOfTheAppInFront) {
  storeOverride(textEdit, FnState::standard);
  launchWithFrontmost(textEdit);
  mac.power.sleep();
  setHardware(FnState::special);
  mac.power.wake();
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
}

TEST_F(AppDelegatePermissionTest, SwitchingAppsAsksForCapsLockOnlyWhenItIsShown) {
  process->launch();
  mac.trace.start();
  mac.applications.activate(safari);
  EXPECT_THAT(mac.trace.take(), Not(Contains("read-modifier-lock-state")));
  keyrow().settings().set(BooleanSetting::showCapsLockIndicator, true);
  mac.trace.start();
  mac.applications.activate(textEdit);
  EXPECT_THAT(mac.trace.take(), Contains("read-modifier-lock-state"));
}

}  // namespace
}  // namespace keyrow::sim
