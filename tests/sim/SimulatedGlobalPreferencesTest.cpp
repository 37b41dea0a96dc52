#include "sim/SimulatedGlobalPreferences.h"

#include <gtest/gtest.h>

#include <optional>
#include <string_view>

#include "sim/SimulatedMac.h"

namespace keyrow::sim {
namespace {

constexpr std::string_view key = "com.apple.keyboard.fnState";
constexpr std::string_view otherKey = "AppleLanguages";

/// Two processes on one machine.
class SimulatedGlobalPreferencesTest : public ::testing::Test {
 protected:
  SimulatedMac mac;
  SimulatedGlobalPreferences ours{mac};
  SimulatedGlobalPreferences theirs{mac};

  void setOnDisk(std::string_view name, std::optional<PropertyValue> value) {
    mac.globalPreferences.setValue(GlobalPreferences::domain, name, std::move(value));
  }
  std::optional<PropertyValue> onDisk(std::string_view name) const {
    return mac.globalPreferences.value(GlobalPreferences::domain, name);
  }
};

TEST_F(SimulatedGlobalPreferencesTest, AKeyThatNobodySetIsAbsent) {
  EXPECT_EQ(ours.copyValue(key), std::nullopt);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(ours.copyValue(key), std::nullopt);
}

TEST_F(SimulatedGlobalPreferencesTest, AProcessStartsWithWhatIsOnDisk) {
  setOnDisk(key, true);
  SimulatedGlobalPreferences fresh{mac};
  EXPECT_EQ(fresh.copyValue(key), PropertyValue{true});
}

TEST_F(SimulatedGlobalPreferencesTest, AChangeByOthersIsSeenOnlyAfterSynchronizing) {
  setOnDisk(key, true);
  EXPECT_EQ(ours.copyValue(key), std::nullopt);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(ours.copyValue(key), PropertyValue{true});

  setOnDisk(key, std::nullopt);
  EXPECT_EQ(ours.copyValue(key), PropertyValue{true});
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(ours.copyValue(key), std::nullopt);
}

TEST_F(SimulatedGlobalPreferencesTest,
       AnOwnChangeIsSeenAtOnceButByOthersOnlyAfterBothSynchronized) {
  ours.setValue(key, true);
  EXPECT_EQ(ours.copyValue(key), PropertyValue{true});
  EXPECT_EQ(onDisk(key), std::nullopt);
  EXPECT_TRUE(theirs.synchronize());
  EXPECT_EQ(theirs.copyValue(key), std::nullopt);

  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(key), PropertyValue{true});
  EXPECT_EQ(theirs.copyValue(key), std::nullopt);
  EXPECT_TRUE(theirs.synchronize());
  EXPECT_EQ(theirs.copyValue(key), PropertyValue{true});
}

TEST_F(SimulatedGlobalPreferencesTest, OwnChangesWinOverThoseOnDiskKeyByKey) {
  setOnDisk(key, false);
  setOnDisk(otherKey, "de");
  ours.setValue(key, true);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(key), PropertyValue{true});
  EXPECT_EQ(onDisk(otherKey), PropertyValue{"de"});
  EXPECT_EQ(ours.copyValue(otherKey), PropertyValue{"de"});
}

TEST_F(SimulatedGlobalPreferencesTest, TheLastOfSeveralChangesIsWritten) {
  ours.setValue(key, true);
  ours.setValue(key, false);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(key), PropertyValue{false});
  EXPECT_EQ(mac.globalPreferences.writeCount(), 1);
}

TEST_F(SimulatedGlobalPreferencesTest, AFailedSynchronizeKeepsChangesPending) {
  ours.setValue(key, true);
  mac.faults.fail(PortCall::synchronizePreferences, 1);
  EXPECT_FALSE(ours.synchronize());
  EXPECT_EQ(onDisk(key), std::nullopt);
  EXPECT_EQ(ours.copyValue(key), PropertyValue{true});

  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(key), PropertyValue{true});
}

TEST_F(SimulatedGlobalPreferencesTest, AFailedSynchronizeTakesInNothing) {
  setOnDisk(key, true);
  mac.faults.fail(PortCall::synchronizePreferences, 1);
  EXPECT_FALSE(ours.synchronize());
  EXPECT_EQ(ours.copyValue(key), std::nullopt);
}

TEST_F(SimulatedGlobalPreferencesTest, WhatWasWrittenIsNotWrittenAgain) {
  ours.setValue(key, true);
  EXPECT_TRUE(ours.synchronize());
  setOnDisk(key, false);
  EXPECT_TRUE(ours.synchronize());
  EXPECT_EQ(onDisk(key), PropertyValue{false});
  EXPECT_EQ(ours.copyValue(key), PropertyValue{false});
}

TEST_F(SimulatedGlobalPreferencesTest, AFailedCopyGivesNothingOnce) {
  ours.setValue(key, true);
  mac.faults.fail(PortCall::copyPreference, 1);
  EXPECT_EQ(ours.copyValue(key), std::nullopt);
  EXPECT_EQ(ours.copyValue(key), PropertyValue{true});
}

TEST_F(SimulatedGlobalPreferencesTest, ChangesOfAProcessThatEndsBeforeSynchronizingAreLost) {
  {
    SimulatedGlobalPreferences shortLived{mac};
    shortLived.setValue(key, true);
  }
  EXPECT_EQ(onDisk(key), std::nullopt);
}

}  // namespace
}  // namespace keyrow::sim
