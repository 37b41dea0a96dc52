#include "sim/machine/Faults.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <vector>

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

class FaultsTest : public ::testing::Test {
 protected:
  Faults faults;

  /// Which of the next calls fail.
  std::vector<bool> strikes(PortCall call, int count) {
    std::vector<bool> result;
    for (; count > 0; --count) result.push_back(faults.strikes(call));
    return result;
  }
};

TEST_F(FaultsTest, NoCallFailsUnlessToldTo) {
  for (std::size_t index = 0; index < portCalls.size(); ++index) {
    EXPECT_FALSE(faults.strikes(static_cast<PortCall>(index))) << portCalls[index].name;
  }
}

TEST_F(FaultsTest, LetsTheNextCallsFail) {
  faults.fail(PortCall::openConnection, 2);
  EXPECT_THAT(strikes(PortCall::openConnection, 4), ElementsAre(true, true, false, false));
}

TEST_F(FaultsTest, LetsCallsPassBeforeTheyFail) {
  faults.fail(PortCall::openConnection, 1, 2);
  EXPECT_THAT(strikes(PortCall::openConnection, 5), ElementsAre(false, false, true, false, false));
}

TEST_F(FaultsTest, LetsCallsFailForEver) {
  faults.fail(PortCall::openConnection, Faults::always, 1);
  EXPECT_FALSE(faults.strikes(PortCall::openConnection));
  EXPECT_EQ(strikes(PortCall::openConnection, 1'000), std::vector<bool>(1'000, true));
}

TEST_F(FaultsTest, FailingNoTimesFailsNothing) {
  faults.fail(PortCall::openConnection, 0, 1);
  EXPECT_THAT(strikes(PortCall::openConnection, 3), ElementsAre(false, false, false));
}

TEST_F(FaultsTest, OtherCallsAreNeitherStruckNorCounted) {
  faults.fail(PortCall::openConnection, 1, 1);
  EXPECT_THAT(strikes(PortCall::setHidParameter, 3), ElementsAre(false, false, false));
  EXPECT_THAT(strikes(PortCall::openConnection, 3), ElementsAre(false, true, false));
}

TEST_F(FaultsTest, ANewPlanReplacesTheOldOne) {
  faults.fail(PortCall::openConnection, Faults::always);
  faults.fail(PortCall::openConnection, 1, 1);
  EXPECT_THAT(strikes(PortCall::openConnection, 3), ElementsAre(false, true, false));
}

TEST_F(FaultsTest, LetsJustOneOfAllCallsFail) {
  faults.failOverallCalls({3});
  EXPECT_FALSE(faults.strikes(PortCall::findService));
  EXPECT_FALSE(faults.strikes(PortCall::openConnection));
  EXPECT_TRUE(faults.strikes(PortCall::setHidParameter));
  EXPECT_FALSE(faults.strikes(PortCall::setHidParameter));
}

TEST_F(FaultsTest, CountsCallsFromTheStart) {
  strikes(PortCall::findService, 5);
  EXPECT_EQ(faults.overallCallCount(), 5U);
  // Already past.
  faults.failOverallCalls({5});
  EXPECT_FALSE(faults.strikes(PortCall::findService));
  faults.failOverallCalls({7});
  EXPECT_TRUE(faults.strikes(PortCall::findService));
  EXPECT_EQ(faults.overallCallCount(), 7U);
}

TEST_F(FaultsTest, FailingCallsCountToo) {
  faults.fail(PortCall::findService, 2);
  strikes(PortCall::findService, 3);
  EXPECT_EQ(faults.overallCallCount(), 3U);
}

TEST_F(FaultsTest, ZeroStandsForNoneOfAllCalls) {
  faults.failOverallCalls({2});
  faults.failOverallCalls({});
  EXPECT_THAT(strikes(PortCall::findService, 3), ElementsAre(false, false, false));
}

TEST_F(FaultsTest, ClearingLetsEveryCallWorkButGoesOnCounting) {
  faults.fail(PortCall::findService, Faults::always);
  faults.failOverallCalls({3});
  EXPECT_TRUE(faults.strikes(PortCall::findService));
  faults.clear();
  EXPECT_THAT(strikes(PortCall::findService, 3), ElementsAre(false, false, false));
  EXPECT_EQ(faults.overallCallCount(), 4U);
}

TEST(PortCallTest, EveryCallHasANameOfItsOwn) {
  std::set<std::string_view> names;
  for (std::size_t index = 0; index < portCalls.size(); ++index) {
    const auto call = static_cast<PortCall>(index);
    EXPECT_NE(info(call).failure, "") << info(call).name;
    names.insert(info(call).name);
  }
  EXPECT_EQ(names.size(), portCalls.size());
}

TEST(PortCallTest, NamesMatchTheirCalls) {
  EXPECT_EQ(info(PortCall::findService).name, "find-service");
  EXPECT_EQ(info(PortCall::synchronizePreferences).name, "synchronize-preferences");
  EXPECT_EQ(info(PortCall::openHidManager).name, "open-hid-manager");
  EXPECT_EQ(info(PortCall::writeDefaults).name, "write-defaults");
  EXPECT_EQ(info(PortCall::writeOutput).name, "write-output");
}

}  // namespace
}  // namespace keyrow::sim
