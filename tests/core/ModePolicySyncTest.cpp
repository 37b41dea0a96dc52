#include "tests/core/ModePolicyTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto appSwitch = "from hardware during app switch";
constexpr auto leavingSystemSettings = "from hardware after leaving System Settings";

/// Adopting a mode that was found in the hardware.
class ModePolicySyncTest : public ModePolicyTest {};

TEST_F(ModePolicySyncTest, DoesNothingAtAllWithTheModeThatIsStored) {
  store("globalFnState", 1);
  for (const bool applyToFrontmost : {false, true}) {
    beginHere();
    policy().syncStoredGlobalFnState(FnState::standard, applyToFrontmost, appSwitch);
    EXPECT_THAT(happenings, IsEmpty());
    EXPECT_EQ(settingsWrites(), 0);
    EXPECT_THAT(sentModes(), IsEmpty());
  }
}

TEST_F(ModePolicySyncTest, StoresAnotherModeAndSaysWhereItWasFound) {
  store("globalFnState", 1);
  beginHere();
  policy().syncStoredGlobalFnState(FnState::special, false, appSwitch);
  EXPECT_THAT(happenings, ElementsAre("store globalFnState", "log"));
  policy().syncStoredGlobalFnState(FnState::standard, false, leavingSystemSettings);
  EXPECT_THAT(newLogLines(),
              ElementsAre("state notice: Synchronized the stored global function key mode from "
                          "hardware during app switch: special function keys.",
                          "state notice: Synchronized the stored global function key mode from "
                          "hardware after leaving System Settings: standard function keys."));
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
  EXPECT_THAT(sentModes(), IsEmpty());
  EXPECT_EQ(policy().lastKnownFnState(), std::nullopt);
}

TEST_F(ModePolicySyncTest, StoresTheModeWhereNoneIsStored) {
  setPreference(true);
  auto values = nonIntegers();
  values.emplace_back(7);
  std::vector<std::optional<PropertyValue>> noModes{values.begin(), values.end()};
  noModes.emplace_back(std::nullopt);
  for (const auto& noMode : noModes) {
    SCOPED_TRACE(propertyText(noMode));
    store("globalFnState", noMode);
    beginHere();
    policy().syncStoredGlobalFnState(FnState::standard, false, appSwitch);
    EXPECT_EQ(storedSettings(), "{globalFnState=1}");
    EXPECT_THAT(newLogLines(),
                ElementsAre("state notice: Synchronized the stored global function key mode from "
                            "hardware during app switch: standard function keys."));
  }
}

TEST_F(ModePolicySyncTest, LeavesTheScopeAloneUnlessItApplies) {
  store("globalFnState", 0);
  applyOverrideOfTextEdit(FnState::special);
  beginHere();
  policy().syncStoredGlobalFnState(FnState::standard, false, appSwitch);
  EXPECT_TRUE(policy().isLocalScopeActive());
  EXPECT_THAT(sentModes(), IsEmpty());
}

TEST_F(ModePolicySyncTest, AppliesTheModeToAFrontmostApplicationWithoutAnOverride) {
  for (const std::optional<std::string>& frontmost : {std::optional<std::string>{safari}, {}}) {
    store("globalFnState", 0);
    applyOverrideOfTextEdit(FnState::special);
    bringToFront(frontmost);
    beginHere();
    policy().syncStoredGlobalFnState(FnState::standard, true, appSwitch);
    EXPECT_THAT(happenings, ElementsAre("store globalFnState", "log", "hardware standard",
                                        "show standard", "show global"));
    EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
    EXPECT_FALSE(policy().isLocalScopeActive());
    EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);
  }
}

TEST_F(ModePolicySyncTest, LetsTheOverrideOfTheFrontmostApplicationHavePriority) {
  store("globalFnState", 0);
  applyOverrideOfTextEdit(FnState::special);
  beginHere();
  policy().syncStoredGlobalFnState(FnState::standard, true, appSwitch);
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=0}}");
  EXPECT_THAT(sentModes(), IsEmpty());
  EXPECT_TRUE(policy().isLocalScopeActive());
  EXPECT_EQ(policy().lastKnownFnState(), FnState::special);
}

TEST_F(ModePolicySyncTest, KeepsTheModeStoredButTheScopeAsItWasWhenItCannotApply) {
  for (const auto call : callsOfAWrite) {
    SCOPED_TRACE(info(call).name);
    store("globalFnState", 0);
    applyOverrideOfTextEdit(FnState::special);
    bringToFront(safari);
    mac.faults.fail(call, 1);
    beginHere();
    policy().syncStoredGlobalFnState(FnState::standard, true, appSwitch);
    EXPECT_THAT(newLogLines(),
                ElementsAre("state notice: Synchronized the stored global function key mode from "
                            "hardware during app switch: standard function keys.",
                            "state error: Failed to apply the stored global function key mode: "
                            "Failed to write the function key mode."));
    EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
    EXPECT_TRUE(policy().isLocalScopeActive());
    EXPECT_EQ(policy().lastKnownFnState(), FnState::special);
  }
}

}  // namespace
}  // namespace keyrow::sim
