#include "tests/core/ModePolicyTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The commands that create, flip and clear an override.
class ModePolicyOverrideTest : public ModePolicyTest {};

TEST_F(ModePolicyOverrideTest, SetsAnOverrideInTheHardwareFirstAndThenStoresIt) {
  store("globalFnState", 0);
  store("localFnState", PropertyDictionary{{safari, 0}});
  beginHere();
  policy().setLocalFnState(FnState::standard, textEdit, nullptr);
  EXPECT_THAT(happenings, ElementsAre("hardware standard", "show standard", "store localFnState",
                                      "show local", "log"));
  EXPECT_THAT(newLogLines(), ElementsAre("state notice: Set a local function key override for the "
                                         "frontmost app to standard function keys."));
  EXPECT_EQ(storedSettings(),
            "{globalFnState=0 localFnState={com.apple.Safari=0 com.apple.TextEdit=1}}");
  EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);
  EXPECT_TRUE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyOverrideTest, SetsTheOverrideOfTheGivenAppWhicheverIsFrontmost) {
  bringToFront(safari);
  policy().setLocalFnState(FnState::special, textEdit, nullptr);
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=0}}");
}

TEST_F(ModePolicyOverrideTest, KeepsEntriesThatItCannotReadWhenItSetsAnOverride) {
  store("localFnState", PropertyDictionary{{safari, "standard"}, {"org.c", true}, {"org.d", 5}});
  policy().setLocalFnState(FnState::standard, textEdit, nullptr);
  EXPECT_EQ(storedSettings(),
            "{localFnState={com.apple.Safari=\"standard\" com.apple.TextEdit=1 org.c=true "
            "org.d=5}}");
}

TEST_F(ModePolicyOverrideTest, CreatesAnOverrideOppositeToTheGlobalModeAndThenFlipsIt) {
  store("globalFnState", 1);
  bringToFront(textEdit);
  beginHere();
  policy().toggleLocalOverride(nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=0}}");
  policy().toggleLocalOverride(nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=1}}");
  policy().toggleLocalOverride(nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=0}}");
  EXPECT_THAT(sentModes(), ElementsAre("0", "1", "0"));
  EXPECT_TRUE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyOverrideTest, CreatesAnOverrideOppositeToTheGlobalModeWhereOneIsNoMode) {
  store("globalFnState", 0);
  store("localFnState", PropertyDictionary{{textEdit, 5}});
  bringToFront(textEdit);
  policy().toggleLocalOverride(nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=0 localFnState={com.apple.TextEdit=1}}");
}

TEST_F(ModePolicyOverrideTest, FlipsAnOverrideWithoutLookingForAGlobalMode) {
  store("localFnState", PropertyDictionary{{textEdit, 0}});
  setPreference(true);
  bringToFront(textEdit);
  beginHere();
  policy().toggleLocalOverride(nullptr);
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=1}}");
  EXPECT_EQ(settingsWrites(), 1);
}

TEST_F(ModePolicyOverrideTest, CreatesAnOverrideOppositeToAGlobalModeThatItInitialisesFirst) {
  setPreference(true);
  bringToFront(textEdit);
  policy().toggleLocalOverride(nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=0}}");
}

TEST_F(ModePolicyOverrideTest, CreatesAnOverrideOppositeToTheHardwareReadAtTheSecondTry) {
  mac.faults.fail(PortCall::findService, 1);
  bringToFront(textEdit);
  beginHere();
  policy().toggleLocalOverride(nullptr);
  EXPECT_THAT(newLogLines(),
              ElementsAre(readFailure,
                          "state notice: Set a local function key override for the frontmost app "
                          "to standard function keys."));
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=1}}");
}

TEST_F(ModePolicyOverrideTest, CreatesNoOverrideWhenNothingCanBeRead) {
  makeHardwareUnreadable();
  bringToFront(textEdit);
  beginHere();
  policy().toggleLocalOverride(nullptr);
  EXPECT_THAT(newLogLines(), ElementsAre(readFailure));
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_THAT(sentModes(), IsEmpty());
}

TEST_F(ModePolicyOverrideTest, CreatesNoOverrideWhereNoAppWithAnIdentifierIsFrontmost) {
  setPreference(true);
  beginHere();
  policy().toggleLocalOverride(nullptr);
  EXPECT_THAT(happenings, IsEmpty());
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_THAT(sentModes(), IsEmpty());
}

TEST_F(ModePolicyOverrideTest, ClearsAnOverrideByRestoringTheGlobalModeFirst) {
  store("globalFnState", 0);
  applyOverrideOfTextEdit(FnState::standard);
  store("localFnState", PropertyDictionary{{textEdit, 1}, {safari, 1}, {"org.c", "x"}});
  beginHere();
  policy().clearLocalOverride(nullptr);
  EXPECT_THAT(happenings, ElementsAre("hardware special", "show special", "show global",
                                      "store localFnState", "log"));
  EXPECT_THAT(newLogLines(), ElementsAre("state notice: Cleared the current app override and "
                                         "restored the global function key mode."));
  EXPECT_EQ(storedSettings(), "{globalFnState=0 localFnState={com.apple.Safari=1 org.c=\"x\"}}");
  EXPECT_EQ(policy().lastKnownFnState(), FnState::special);
}

TEST_F(ModePolicyOverrideTest, ClearsAnOverrideForAGlobalModeThatItInitialisesFirst) {
  setPreference(false);
  applyOverrideOfTextEdit(FnState::standard);
  beginHere();
  policy().clearLocalOverride(nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=0 localFnState={}}");
  EXPECT_EQ(mac.hid.modeName(), "special");
}

TEST_F(ModePolicyOverrideTest, KeepsTheOverrideWhenThereIsNoGlobalModeToRestore) {
  applyOverrideOfTextEdit(FnState::standard);
  beginHere();
  policy().clearLocalOverride(nullptr);
  EXPECT_THAT(newLogLines(),
              ElementsAre(overrideIsNotGlobal,
                          "state error: Unable to clear the current app override because no global "
                          "function key mode is stored."));
  EXPECT_EQ(storedSettings(), "{localFnState={com.apple.TextEdit=1}}");
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_THAT(sentModes(), IsEmpty());
  EXPECT_TRUE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyOverrideTest, TogglesTheGlobalModeWhereThereIsNoOverrideToClear) {
  store("localFnState", PropertyDictionary{{textEdit, 5}});
  for (const std::optional<std::string>& frontmost :
       {std::optional<std::string>{safari}, std::optional<std::string>{textEdit}, {}}) {
    store("globalFnState", 0);
    bringToFront(frontmost);
    beginHere();
    policy().clearLocalOverride(nullptr);
    EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=5}}");
    EXPECT_THAT(sentModes(), ElementsAre("1"));
    EXPECT_THAT(newLogLines(), ElementsAre("state notice: Set the global function key mode to "
                                           "standard function keys."));
  }
}

}  // namespace
}  // namespace keyrow::sim
