#include "input/KeyboardMonitoring.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

/// A Mac whose user has not been asked for Input Monitoring.
class KeyboardMonitoringTest : public SimulatedMacTest {
 protected:
  void SetUp() override {
    mac.inputMonitoring.set(InputMonitoringAccess::unknown);
    mac.trace.start();
  }

  void answer(InputMonitoringAccess access) {
    mac.inputMonitoring.answer(access);
    mac.scheduler.runReady();
  }

  int openManagers() const { return mac.openHandles.count("HidManager"); }

  std::ptrdiff_t requests() {
    return std::ranges::count(mac.trace.take(), "request input monitoring");
  }
};

TEST_F(KeyboardMonitoringTest, StartsWithTheAnswer) {
  process->launch();
  EXPECT_TRUE(mac.inputMonitoring.isAsking());
  EXPECT_EQ(openManagers(), 0);
  answer(InputMonitoringAccess::granted);
  EXPECT_EQ(openManagers(), 1);
}

TEST_F(KeyboardMonitoringTest, TheSettingOfCapsLockOpensNothingBeforeTheAnswer) {
  process->launch();
  keyrow().settings().set(BooleanSetting::showCapsLockIndicator, true);
  EXPECT_EQ(openManagers(), 0);
  answer(InputMonitoringAccess::granted);
  EXPECT_EQ(openManagers(), 2);
}

TEST_F(KeyboardMonitoringTest, AsksOnlyOnce) {
  process->launch();
  keyrow().keyboardMonitoring().permissionsMayHaveChanged();
  EXPECT_EQ(requests(), 1);
  // The dialog went away without an answer.
  answer(InputMonitoringAccess::unknown);
  keyrow().keyboardMonitoring().permissionsMayHaveChanged();
  EXPECT_EQ(requests(), 0);
  EXPECT_EQ(openManagers(), 0);
}

TEST_F(KeyboardMonitoringTest, DoesNotAskBesideTheQuestionForAccessibility) {
  mac.isAccessibilityGranted = false;
  process->launch();
  keyrow().keyboardMonitoring().permissionsMayHaveChanged();
  EXPECT_FALSE(mac.inputMonitoring.isAsking());
  mac.isAccessibilityGranted = true;
  keyrow().keyboardMonitoring().permissionsMayHaveChanged();
  EXPECT_TRUE(mac.inputMonitoring.isAsking());
}

TEST_F(KeyboardMonitoringTest, AnAnswerInSystemSettingsCountsThoughTheDialogIsOpen) {
  process->launch();
  mac.inputMonitoring.set(InputMonitoringAccess::granted);
  keyrow().keyboardMonitoring().permissionsMayHaveChanged();
  EXPECT_EQ(openManagers(), 1);
  answer(InputMonitoringAccess::granted);
  EXPECT_EQ(openManagers(), 1);
}

TEST_F(KeyboardMonitoringTest, AnAnswerAfterTerminationOpensNothing) {
  process->launch();
  keyrow().appDelegate().applicationWillTerminate();
  answer(InputMonitoringAccess::granted);
  EXPECT_EQ(openManagers(), 0);
}

TEST_F(KeyboardMonitoringTest, AnAnswerFindsNoKeyrowThatHasGone) {
  process->launch();
  process.reset();
  answer(InputMonitoringAccess::granted);
  EXPECT_TRUE(mac.openHandles.all().empty());
}

TEST_F(KeyboardMonitoringTest, AnAnswerWaitsForAKeyrowThatHangs) {
  process->launch();
  process->hang(Hang::reachable);
  answer(InputMonitoringAccess::granted);
  EXPECT_EQ(openManagers(), 0);
  process->resume();
  EXPECT_EQ(openManagers(), 1);
}

TEST_F(KeyboardMonitoringTest, WhoeverOpensAManagerBeforeTheAnswerWaitsForIt) {
  const auto manager = process->platform().hidManagers.create();
  EXPECT_THROW(manager->open(), WaitsForConsent);
}

TEST_F(KeyboardMonitoringTest, WithoutASecondPermissionTheFirstIsEnoughForTheTap) {
  process->launch();
  answer(InputMonitoringAccess::denied);
  EXPECT_EQ(mac.eventTaps.enabledCount(), 1);
  EXPECT_EQ(openManagers(), 0);
}

}  // namespace
}  // namespace keyrow::sim
