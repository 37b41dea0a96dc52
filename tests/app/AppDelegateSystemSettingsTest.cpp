#include <gmock/gmock.h>

#include <memory>
#include <string>

#include "app/AppDelegate.h"
#include "tests/app/AppDelegateFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

using AppDelegateSystemSettingsTest = AppDelegateFixture;

/// Both identifiers that System Settings has had.
class SystemSettingsTest : public AppDelegateFixture,
                           public ::testing::WithParamInterface<const char*> {
 protected:
  /// Launches with System Settings in front, where the user then changes the mode.
  void changeModeInFront() {
    launchWithFrontmost(GetParam());
    mac.changeModeInSystemSettings(true);
  }
};

TEST_P(SystemSettingsTest, LeavingItForAnotherAppAdoptsTheHardwareMode) {
  changeModeInFront();
  takeWrittenModes();
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  // Adopting writes nothing, only applying does.
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1));
  EXPECT_THAT(logLines(), ElementsAre(leftSystemSettings));
}

TEST_P(SystemSettingsTest, LeavingItForNoAppAdoptsTheHardwareMode) {
  changeModeInFront();
  mac.applications.activate(std::nullopt);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  EXPECT_THAT(logLines(), ElementsAre(leftSystemSettings));
}

TEST_P(SystemSettingsTest, IsRememberedFromTheLastActivation) {
  launchWithFrontmost(safari);
  mac.applications.activate(GetParam());
  mac.changeModeInSystemSettings(true);
  mac.applications.activate(textEdit);
  EXPECT_THAT(logLines(), ElementsAre(leftSystemSettings));
}

TEST_P(SystemSettingsTest, IsLeftOnce) {
  launchWithFrontmost(GetParam());
  mac.applications.activate(textEdit);
  setHardware(FnState::standard);
  mac.applications.activate(safari);
  EXPECT_THAT(logLines(), ElementsAre(switchedApps));
}

TEST_P(SystemSettingsTest, ComingToItIsNotLeavingIt) {
  launchWithFrontmost(safari);
  setHardware(FnState::standard);
  mac.applications.activate(GetParam());
  EXPECT_THAT(logLines(), ElementsAre(switchedApps));
}

TEST_P(SystemSettingsTest, ActivatingItAgainIsNotLeavingIt) {
  changeModeInFront();
  mac.applications.activate(GetParam());
  EXPECT_THAT(logLines(), ElementsAre(switchedApps));
}

TEST_P(SystemSettingsTest, LeavingItWithTheModeUnchangedStoresAndLogsNothing) {
  launchWithFrontmost(GetParam());
  const auto writes = mac.defaults.writeCount();
  mac.applications.activate(textEdit);
  EXPECT_EQ(mac.defaults.writeCount(), writes);
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_P(SystemSettingsTest, LeavingItAdoptsTheHardwareModeBeforeTheNextAppsOverrideApplies) {
  storeOverride(textEdit, FnState::special);
  changeModeInFront();
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_TRUE(keyrow().modePolicy().isLocalScopeActive());
}

TEST_P(SystemSettingsTest, LeavingItAdoptsTheHardwareModeEvenWhenItHasAnOverride) {
  storeOverride(GetParam(), FnState::special);
  changeModeInFront();
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_THAT(logLines(), ElementsAre(leftSystemSettings));
}

TEST_P(SystemSettingsTest, AFailedReadOnLeavingItIsMadeUpForByTheAppSwitch) {
  launchWithFrontmost(GetParam());
  setHardware(FnState::standard);
  mac.faults.fail(PortCall::readServiceProperty, 1);
  mac.applications.activate(textEdit);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  EXPECT_THAT(logLines(), ElementsAre(readFailed, switchedApps));
}

INSTANTIATE_TEST_SUITE_P(Identifiers, SystemSettingsTest,
                         ::testing::Values("com.apple.SystemSettings",
                                           "com.apple.systempreferences"),
                         [](const auto& test) {
                           return test.index == 0 ? "SystemSettings" : "SystemPreferences";
                         });

/// Under an override nothing but leaving System Settings would adopt a mode.
TEST_F(AppDelegateSystemSettingsTest, SwitchingBetweenTheTwoSystemSettingsIsNotLeavingThem) {
  store("localFnState", PropertyDictionary{{systemSettings, 0}, {systemPreferences, 0}});
  launchWithFrontmost(systemSettings);
  for (const auto* identifier : {systemPreferences, systemSettings}) {
    setHardware(FnState::standard);
    mac.applications.activate(identifier);
    EXPECT_EQ(stored("globalFnState"), PropertyValue{0}) << identifier;
  }
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(AppDelegateSystemSettingsTest, AnIdentifierThatOnlyResemblesSystemSettingsIsNotIt) {
  for (const auto* identifier : {"com.apple.systemsettings", "com.apple.SystemPreferences",
                                 "com.apple.systempreferences.helper", ""}) {
    mac.applications.install(identifier);
    storeOverride(identifier, FnState::special);
    process = std::make_unique<SimulatedProcess>(mac, 501);
    launchWithFrontmost(identifier);
    setHardware(FnState::standard);
    mac.applications.activate(safari);
    EXPECT_EQ(stored("globalFnState"), PropertyValue{0}) << identifier;
  }
}

}  // namespace
}  // namespace keyrow::sim
