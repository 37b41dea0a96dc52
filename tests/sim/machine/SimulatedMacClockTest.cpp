#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;

using SimulatedMacClockTest = SimulatedMacTest;

TEST_F(SimulatedMacClockTest, IsSwitchedOnInTheMorningOfTheFirstOfMarch) {
  const std::chrono::sys_days day{std::chrono::year{2024} / 3 / 1};
  EXPECT_EQ(mac.wallClock(), day + 8h);
  mac.scheduler.advance(90min + 250ms);
  EXPECT_EQ(mac.wallClock(), day + 9h + 30min + 250ms);
  EXPECT_EQ(process->platform().clock.now(), mac.wallClock());
}

TEST_F(SimulatedMacClockTest, CountsTicksByItsTimeBase) {
  EXPECT_EQ(mac.machAbsoluteTime(), 0U);
  mac.scheduler.advance(1s);
  EXPECT_EQ(mac.machAbsoluteTime(), 24'000'000U);
  mac.machTimebase = {.numer = 1, .denom = 1};
  EXPECT_EQ(mac.machAbsoluteTime(), 1'000'000'000U);
  mac.machTimebase = {.numer = 0, .denom = 0};
  EXPECT_EQ(mac.machAbsoluteTime(), 0U);
}

TEST_F(SimulatedMacClockTest, StartsWithTheSpecialModeAndNothingInFront) {
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_EQ(preference(), std::nullopt);
  EXPECT_EQ(process->platform().workspace.frontmostBundleIdentifier(), std::nullopt);
}

TEST_F(SimulatedMacClockTest, SystemSettingsChangesHardwareAndPreferenceTogether) {
  mac.changeModeInSystemSettings(true);
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_EQ(preference(), PropertyValue{true});
  mac.changeModeInSystemSettings(false);
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_EQ(preference(), PropertyValue{false});
}

TEST_F(SimulatedMacClockTest, AFailingPortCallIsOnTheTimeline) {
  mac.scheduler.advance(2s);
  mac.faults.fail(PortCall::openHidManager, 1);
  EXPECT_FALSE(mac.call(PortCall::openHidManager));
  EXPECT_TRUE(mac.call(PortCall::openHidManager));
  const auto events = mac.timeline.events();
  ASSERT_EQ(events.size(), 1U);
  EXPECT_EQ(events[0].time, 2s);
  EXPECT_EQ(textOf(events[0]), "fault open-hid-manager");
}

}  // namespace
}  // namespace keyrow::sim
