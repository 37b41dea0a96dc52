#include "app/AppDelegate.h"

#include <gmock/gmock.h>

#include <chrono>
#include <memory>

#include "platform/HidManagers.h"
#include "tests/app/AppDelegateFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

using AppDelegateTest = AppDelegateFixture;

TEST_F(AppDelegateTest, AppliesTheOverrideOfTheFrontmostAppAtLaunch) {
  storeOverride(textEdit, FnState::standard);
  launchWithFrontmost(textEdit);
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_TRUE(keyrow().modePolicy().isLocalScopeActive());
}

TEST_F(AppDelegateTest, AppliesTheStoredGlobalModeAtLaunchWhateverTheHardwareHolds) {
  setHardware(FnState::standard);
  launchWithFrontmost(safari);
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_FALSE(keyrow().modePolicy().isLocalScopeActive());
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(AppDelegateTest, InitializesTheGlobalModeAtTheFirstLaunch) {
  store("globalFnState", std::nullopt);
  setPreference(true);
  process = std::make_unique<SimulatedProcess>(mac, 501);
  launchWithFrontmost(std::nullopt);
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
}

TEST_F(AppDelegateTest, DropsOverridesOfAppsThatAreMissingFromLaunchToTermination) {
  store("localFnState", PropertyDictionary{{"com.example.Gone", 1}, {textEdit, 1}});
  launchWithFrontmost("com.example.Gone");
  EXPECT_EQ(mac.hid.modeName(), "standard");
  mac.scheduler.advance(std::chrono::minutes{1});
  process->terminate();
  EXPECT_EQ(stored("localFnState"), (PropertyDictionary{{textEdit, 1}}));
}

TEST_F(AppDelegateTest, ListensToKeyboardsFromLaunchToTermination) {
  const auto keyboard = std::make_shared<const SimulatedKeyboard>(
      SimulatedKeyboard{.registryID = 1, .properties = {}});
  const auto isHeard = [&] {
    mac.sendInput(keyboard, hidPage::keyboardOrKeypad);
    return keyrow().keyboardSourceMonitor().source(mac.machAbsoluteTime()) != nullptr;
  };
  EXPECT_FALSE(isHeard());
  process->launch();
  EXPECT_TRUE(isHeard());
  process->terminate();
  EXPECT_FALSE(isHeard());
}

TEST_F(AppDelegateTest, AppliesTheOverrideOfTheAppThatComesToTheFront) {
  storeOverride(textEdit, FnState::standard);
  launchWithFrontmost(safari);
  takeWrittenModes();
  mac.applications.activate(textEdit);
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1));
  EXPECT_TRUE(keyrow().modePolicy().isLocalScopeActive());

  mac.applications.activate(safari);
  EXPECT_THAT(takeWrittenModes(), ElementsAre(0));
  EXPECT_FALSE(keyrow().modePolicy().isLocalScopeActive());
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(AppDelegateTest, AnOverrideEqualToTheGlobalModeIsAppliedAndMakesTheScopeLocal) {
  storeOverride(textEdit, FnState::special);
  launchWithFrontmost(safari);
  takeWrittenModes();
  mac.applications.activate(textEdit);
  EXPECT_THAT(takeWrittenModes(), ElementsAre(0));
  EXPECT_TRUE(keyrow().modePolicy().isLocalScopeActive());
}

TEST_F(AppDelegateTest, AppliesTheGlobalModeWhenNoAppIsInFront) {
  storeOverride(textEdit, FnState::standard);
  launchWithFrontmost(textEdit);
  takeWrittenModes();
  mac.applications.activate(std::nullopt);
  EXPECT_THAT(takeWrittenModes(), ElementsAre(0));
  EXPECT_FALSE(keyrow().modePolicy().isLocalScopeActive());
}

TEST_F(AppDelegateTest, WaitsForItsSessionWhenItIsLaunchedInTheBackground) {
  storeOverride(textEdit, FnState::standard);
  mac.applications.activate(textEdit);
  mac.sessions.switchTo("anna", false);
  setHardware(FnState::standard);
  process->launch();
  EXPECT_THAT(takeWrittenModes(), ElementsAre());
  EXPECT_EQ(mac.openHandles.count("EventTap"), 0);
  EXPECT_EQ(mac.openHandles.count("HidManager"), 0);
  EXPECT_THAT(logLines(), ElementsAre());

  setHardware(FnState::special);
  mac.sessions.switchTo("me", false);
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1));
  EXPECT_EQ(mac.openHandles.count("EventTap"), 1);
  EXPECT_TRUE(keyrow().modePolicy().isLocalScopeActive());
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
}

TEST_F(AppDelegateTest, FollowsNoAppBeforeLaunch) {
  storeOverride(textEdit, FnState::standard);
  mac.applications.activate(textEdit);
  EXPECT_EQ(mac.hid.modeName(), "special");
}

TEST_F(AppDelegateTest, AdoptsAModeFoundInTheHardwareBeforeApplyingTheNewAppsOverride) {
  storeOverride(textEdit, FnState::special);
  launchWithFrontmost(safari);
  takeWrittenModes();
  setHardware(FnState::standard);
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  EXPECT_THAT(takeWrittenModes(), ElementsAre(0));
  EXPECT_THAT(logLines(), ElementsAre(switchedApps));

  mac.applications.activate(safari);
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1));
}

TEST_F(AppDelegateTest, SettlesTheHardwareModeWhenNoneIsStoredAnyMore) {
  launchWithFrontmost(safari);
  setHardware(FnState::standard);
  store("globalFnState", std::nullopt);
  takeWrittenModes();
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  // What is deleted is applied anew, and so is what belongs to the new application.
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1, 1));
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(AppDelegateTest, DoesNotAdoptTheHardwareModeWhileAnOverrideIsInForce) {
  storeOverride(textEdit, FnState::special);
  launchWithFrontmost(textEdit);
  setHardware(FnState::standard);
  mac.applications.activate(safari);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(AppDelegateTest, AModeThatCouldNotBeReplacedIsNotAdopted) {
  setHardware(FnState::standard);
  mac.faults.fail(PortCall::setHidParameter, 1);
  launchWithFrontmost(safari);
  ASSERT_EQ(mac.hid.modeName(), "standard");
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
  EXPECT_EQ(mac.hid.modeName(), "special");
  // From now on a mode in the hardware is somebody's choice again.
  setHardware(FnState::standard);
  mac.applications.activate(safari);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
}

TEST_F(AppDelegateTest, AModeThatWasChosenAfterAFailureIsAdopted) {
  mac.faults.fail(PortCall::setHidParameter, 1);
  launchWithFrontmost(safari);
  setHardware(FnState::standard);
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
}

TEST_F(AppDelegateTest, WhatWasThereAtAFailureIsUnknownSoItIsNotAdopted) {
  setHardware(FnState::standard);
  mac.faults.fail(PortCall::findService, Faults::always);
  launchWithFrontmost(safari);
  mac.faults.clear();
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
  EXPECT_EQ(mac.hid.modeName(), "special");
}

TEST_F(AppDelegateTest, AHardwareModeThatCannotBeReadIsNotAdopted) {
  launchWithFrontmost(safari);
  setHardware(FnState::standard);
  mac.faults.fail(PortCall::readServiceProperty, 1);
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_THAT(logLines(), ElementsAre(readFailed));
}

TEST_F(AppDelegateTest, IsNotNappedAsLongAsItLives) {
  EXPECT_EQ(mac.openHandles.count("activity"), 1);
  process->launch();
  mac.power.sleep();
  mac.power.wake();
  EXPECT_EQ(mac.openHandles.count("activity"), 1);
  process->terminate();
  mac.scheduler.runReady();
  EXPECT_EQ(mac.openHandles.count("activity"), 0);
}

}  // namespace
}  // namespace keyrow::sim
