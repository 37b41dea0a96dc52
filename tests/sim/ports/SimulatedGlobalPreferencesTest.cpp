#include "sim/ports/SimulatedGlobalPreferences.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {
namespace {

constexpr std::string_view fnStateKey = "com.apple.keyboard.fnState";
constexpr std::string_view otherKey = "AppleLanguages";

/// Two processes on one machine.
class SimulatedGlobalPreferencesTest : public ::testing::Test {
 protected:
  SimulatedMac mac;
  SimulatedGlobalPreferences ours{mac, std::string{GlobalPreferences::domain}};
  SimulatedGlobalPreferences theirs{mac, std::string{GlobalPreferences::domain}};

  void setOnDisk(std::string_view name, std::optional<PropertyValue> value) {
    mac.globalPreferences.setValue(GlobalPreferences::domain, name, std::move(value));
  }
  std::optional<PropertyValue> onDisk(std::string_view name) const {
    return mac.globalPreferences.value(GlobalPreferences::domain, name);
  }
};

TEST_F(SimulatedGlobalPreferencesTest, AKeyThatNobodySetIsAbsent) {
  EXPECT_EQ(ours.copyValue(fnStateKey), std::nullopt);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(ours.copyValue(fnStateKey), std::nullopt);
}

TEST_F(SimulatedGlobalPreferencesTest, AProcessStartsWithWhatIsOnDisk) {
  setOnDisk(fnStateKey, true);
  SimulatedGlobalPreferences fresh{mac, std::string{GlobalPreferences::domain}};
  EXPECT_EQ(fresh.copyValue(fnStateKey), PropertyValue{true});
}

TEST_F(SimulatedGlobalPreferencesTest, AChangeByOthersIsSeenOnlyAfterSynchronizing) {
  setOnDisk(fnStateKey, true);
  EXPECT_EQ(ours.copyValue(fnStateKey), std::nullopt);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(ours.copyValue(fnStateKey), PropertyValue{true});

  setOnDisk(fnStateKey, std::nullopt);
  EXPECT_EQ(ours.copyValue(fnStateKey), PropertyValue{true});
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(ours.copyValue(fnStateKey), std::nullopt);
}

TEST_F(SimulatedGlobalPreferencesTest,
       AnOwnChangeIsSeenAtOnceButByOthersOnlyAfterBothSynchronized) {
  ours.setValue(fnStateKey, true);
  EXPECT_EQ(ours.copyValue(fnStateKey), PropertyValue{true});
  EXPECT_EQ(onDisk(fnStateKey), std::nullopt);
  EXPECT_TRUE(theirs.synchronize());
  EXPECT_EQ(theirs.copyValue(fnStateKey), std::nullopt);

  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(fnStateKey), PropertyValue{true});
  EXPECT_EQ(theirs.copyValue(fnStateKey), std::nullopt);
  EXPECT_TRUE(theirs.synchronize());
  EXPECT_EQ(theirs.copyValue(fnStateKey), PropertyValue{true});
}

TEST_F(SimulatedGlobalPreferencesTest, OwnChangesWinOverThoseOnDiskKeyByKey) {
  setOnDisk(fnStateKey, false);
  setOnDisk(otherKey, "de");
  ours.setValue(fnStateKey, true);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(fnStateKey), PropertyValue{true});
  EXPECT_EQ(onDisk(otherKey), PropertyValue{"de"});
  EXPECT_EQ(ours.copyValue(otherKey), PropertyValue{"de"});
}

TEST_F(SimulatedGlobalPreferencesTest, TheLastOfSeveralChangesIsWritten) {
  ours.setValue(fnStateKey, true);
  ours.setValue(fnStateKey, false);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(fnStateKey), PropertyValue{false});
  EXPECT_EQ(mac.globalPreferences.writeCount(), 1);
}

TEST_F(SimulatedGlobalPreferencesTest, AFailedSynchronizeKeepsChangesPending) {
  ours.setValue(fnStateKey, true);
  mac.faults.fail(PortCall::synchronizePreferences, 1);
  EXPECT_FALSE(ours.synchronize());
  EXPECT_EQ(onDisk(fnStateKey), std::nullopt);
  EXPECT_EQ(ours.copyValue(fnStateKey), PropertyValue{true});

  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(fnStateKey), PropertyValue{true});
}

TEST_F(SimulatedGlobalPreferencesTest, AFailedSynchronizeTakesInNothing) {
  setOnDisk(fnStateKey, true);
  mac.faults.fail(PortCall::synchronizePreferences, 1);
  EXPECT_FALSE(ours.synchronize());
  EXPECT_EQ(ours.copyValue(fnStateKey), std::nullopt);
}

TEST_F(SimulatedGlobalPreferencesTest, WhatWasWrittenIsNotWrittenAgain) {
  ours.setValue(fnStateKey, true);
  EXPECT_TRUE(ours.synchronize());
  setOnDisk(fnStateKey, false);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(fnStateKey), PropertyValue{false});
  EXPECT_EQ(ours.copyValue(fnStateKey), PropertyValue{false});
}

TEST_F(SimulatedGlobalPreferencesTest, AFailedCopyGivesNothingOnce) {
  ours.setValue(fnStateKey, true);
  mac.faults.fail(PortCall::copyPreference, 1);
  EXPECT_EQ(ours.copyValue(fnStateKey), std::nullopt);
  EXPECT_EQ(ours.copyValue(fnStateKey), PropertyValue{true});
}

TEST_F(SimulatedGlobalPreferencesTest, ChangesOfAProcessThatEndsBeforeSynchronizingAreLost) {
  {
    SimulatedGlobalPreferences shortLived{mac, std::string{GlobalPreferences::domain}};
    shortLived.setValue(fnStateKey, true);
  }
  EXPECT_EQ(onDisk(fnStateKey), std::nullopt);
}

}  // namespace
}  // namespace keyrow::sim
