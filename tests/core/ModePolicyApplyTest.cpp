#include "tests/core/ModePolicyTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Applying what is stored, and giving the global mode back in the end.
class ModePolicyApplyTest : public ModePolicyTest {};

TEST_F(ModePolicyApplyTest, KnowsNothingBeforeItsFirstOperation) {
  EXPECT_EQ(policy().lastKnownFnState(), std::nullopt);
  EXPECT_FALSE(policy().isLocalScopeActive());
  EXPECT_THAT(happenings, IsEmpty());
}

TEST_F(ModePolicyApplyTest, AppliesTheOverrideOfTheFrontmostApplication) {
  store("globalFnState", 0);
  store("localFnState", PropertyDictionary{{textEdit, 1}, {safari, 0}});
  bringToFront(textEdit);
  beginHere();
  policy().applyStoredFnState();
  EXPECT_THAT(happenings, ElementsAre("hardware standard", "show standard", "show local"));
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);
  EXPECT_TRUE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyApplyTest, AppliesAnOverrideThatEqualsTheGlobalModeAndIsInLocalScope) {
  store("globalFnState", 0);
  store("localFnState", PropertyDictionary{{textEdit, 0}});
  bringToFront(textEdit);
  beginHere();
  policy().applyStoredFnState();
  EXPECT_THAT(sentModes(), ElementsAre("0"));
  EXPECT_THAT(happenings, ElementsAre("show special", "show local"));
  EXPECT_TRUE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyApplyTest, AppliesTheGlobalModeWhereThereIsNoOverride) {
  store("globalFnState", 0);
  applyOverrideOfTextEdit(FnState::standard);
  for (const std::optional<std::string>& other : {std::optional<std::string>{safari}, {}}) {
    setHardware(FnState::standard);
    bringToFront(other);
    beginHere();
    policy().applyStoredFnState();
    EXPECT_THAT(happenings, ElementsAre("hardware special", "show special", "show global"));
    EXPECT_EQ(settingsWrites(), 0);
    EXPECT_FALSE(policy().isLocalScopeActive());
  }
}

TEST_F(ModePolicyApplyTest, TakesAnOverrideThatIsNoModeForNone) {
  auto values = nonModes();
  values.emplace_back(5);
  store("globalFnState", 1);
  bringToFront(textEdit);
  for (const auto& value : values) {
    SCOPED_TRACE(propertyText(value));
    store("localFnState", PropertyDictionary{{textEdit, value}});
    beginHere();
    policy().applyStoredFnState();
    EXPECT_THAT(sentModes(), ElementsAre("1"));
    EXPECT_EQ(settingsWrites(), 0);
    EXPECT_FALSE(policy().isLocalScopeActive());
  }
}

TEST_F(ModePolicyApplyTest, AppliesTheGlobalModeWhenTheSystemNamesNoFrontmostApplication) {
  store("globalFnState", 0);
  applyOverrideOfTextEdit(FnState::standard);
  mac.faults.fail(PortCall::frontmostApplication, 1);
  policy().applyStoredFnState();
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_FALSE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyApplyTest, InitialisesTheStoredGlobalModeFromSystemSettingsAndAppliesIt) {
  setPreference(true);
  beginHere();
  policy().applyStoredFnState();
  EXPECT_THAT(happenings, ElementsAre("store globalFnState", "log", "hardware standard",
                                      "show standard", "show global"));
  EXPECT_THAT(
      newLogLines(),
      ElementsAre("state notice: Initialized the stored global function key mode from System "
                  "Settings: standard function keys."));
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
}

TEST_F(ModePolicyApplyTest, RefreshesFromTheHardwareWhenNoGlobalModeCanBeFound) {
  mac.faults.fail(PortCall::findService, 1);
  setHardware(FnState::standard);
  beginHere();
  policy().applyStoredFnState();
  EXPECT_THAT(newLogLines(), ElementsAre(readFailure));
  EXPECT_THAT(sentModes(), IsEmpty());
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);
  EXPECT_EQ(happenings.back(), "show standard");
}

TEST_F(ModePolicyApplyTest, KeepsTheScopeWhenNoGlobalModeCanBeFound) {
  applyOverrideOfTextEdit(FnState::standard);
  bringToFront(safari);
  beginHere();
  policy().applyStoredFnState();
  EXPECT_THAT(happenings, ElementsAre("log"));
  EXPECT_THAT(newLogLines(), ElementsAre(overrideIsNotGlobal));
  EXPECT_TRUE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyApplyTest, GivesTheStoredGlobalModeBackInTheEnd) {
  store("globalFnState", 0);
  applyOverrideOfTextEdit(FnState::standard);
  beginHere();
  policy().restoreGlobalFnState();
  EXPECT_THAT(happenings, ElementsAre("hardware special", "show global", "log"));
  EXPECT_THAT(newLogLines(), ElementsAre("state notice: Restored the global function key mode "
                                         "before termination: special function keys."));
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_EQ(policy().lastKnownFnState(), FnState::special);
  EXPECT_FALSE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyApplyTest, GivesBackAGlobalModeThatItFindsOnlyInTheEnd) {
  setPreference(true);
  beginHere();
  policy().restoreGlobalFnState();
  EXPECT_THAT(
      newLogLines(),
      ElementsAre("state notice: Initialized the stored global function key mode from System "
                  "Settings: standard function keys.",
                  "state notice: Restored the global function key mode before termination: "
                  "standard function keys."));
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
  EXPECT_EQ(mac.hid.modeName(), "standard");
}

TEST_F(ModePolicyApplyTest, SaysInTheEndThatThereIsNoGlobalModeToGiveBack) {
  applyOverrideOfTextEdit(FnState::standard);
  beginHere();
  policy().restoreGlobalFnState();
  EXPECT_THAT(newLogLines(),
              ElementsAre(overrideIsNotGlobal,
                          "state notice: Unable to restore the global function key mode before "
                          "termination because no global state is stored."));
  EXPECT_THAT(sentModes(), IsEmpty());
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_TRUE(policy().isLocalScopeActive());
}

}  // namespace
}  // namespace keyrow::sim
