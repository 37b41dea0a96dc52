#include "tests/core/ModePolicyTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Finding the global mode, and the commands that change it.
class ModePolicyGlobalModeTest : public ModePolicyTest {};

TEST_F(ModePolicyGlobalModeTest, ReturnsTheStoredGlobalModeAsItIs) {
  setPreference(true);
  setHardware(FnState::standard);
  store("globalFnState", 0);
  beginHere();
  EXPECT_EQ(policy().storedGlobalFnState(), FnState::special);
  EXPECT_THAT(happenings, IsEmpty());
  EXPECT_EQ(settingsWrites(), 0);
}

TEST_F(ModePolicyGlobalModeTest, InitialisesTheStoredGlobalModeFromEitherPreference) {
  const std::vector<std::pair<bool, FnState>> modes{{true, FnState::standard},
                                                    {false, FnState::special}};
  for (const auto& [preferred, mode] : modes) {
    store("globalFnState", std::nullopt);
    setPreference(preferred);
    // The preference comes before the hardware, which holds the opposite here.
    setHardware(otherFnState(mode));
    beginHere();
    EXPECT_EQ(policy().storedGlobalFnState(), mode);
    EXPECT_EQ(stored("globalFnState"), PropertyValue{rawValue(mode)});
    EXPECT_THAT(newLogLines(), ElementsAre("state notice: Initialized the stored global function "
                                           "key mode from System Settings: " +
                                           std::string{modeText(mode)} + "."));
    EXPECT_THAT(sentModes(), IsEmpty());
    EXPECT_EQ(policy().lastKnownFnState(), std::nullopt);
  }
}

TEST_F(ModePolicyGlobalModeTest, InitialisesTheStoredGlobalModeAfreshWhereWhatIsStoredIsNoMode) {
  auto values = nonModes();
  values.insert(values.end(), {7, -1});
  for (const auto& value : values) {
    SCOPED_TRACE(propertyText(value));
    store("globalFnState", value);
    setPreference(true);
    EXPECT_EQ(policy().storedGlobalFnState(), FnState::standard);
    EXPECT_EQ(storedSettings(), "{globalFnState=1}");

    store("globalFnState", value);
    setPreference(std::nullopt);
    EXPECT_EQ(policy().storedGlobalFnState(), FnState::special);
    EXPECT_EQ(storedSettings(), "{globalFnState=0}");
  }
}

TEST_F(ModePolicyGlobalModeTest, InitialisesTheStoredGlobalModeFromTheHardwareWithoutALogLine) {
  for (const std::optional<PropertyValue>& preferred :
       {std::optional<PropertyValue>{}, std::optional<PropertyValue>{"standard"},
        std::optional<PropertyValue>{PropertyDictionary{}}}) {
    SCOPED_TRACE(propertyText(preferred));
    setPreference(preferred);
    store("globalFnState", std::nullopt);
    setHardware(FnState::standard);
    beginHere();
    EXPECT_EQ(policy().storedGlobalFnState(), FnState::standard);
    EXPECT_THAT(happenings, ElementsAre("store globalFnState"));
    EXPECT_EQ(storedSettings(), "{globalFnState=1}");
    EXPECT_THAT(sentModes(), IsEmpty());
    EXPECT_EQ(policy().lastKnownFnState(), std::nullopt);
  }
}

TEST_F(ModePolicyGlobalModeTest, HasNoStoredGlobalModeWhenNothingCanBeRead) {
  makeHardwareUnreadable();
  beginHere();
  EXPECT_EQ(policy().storedGlobalFnState(), std::nullopt);
  EXPECT_THAT(newLogLines(), ElementsAre(readFailure));
  EXPECT_EQ(settingsWrites(), 0);
}

TEST_F(ModePolicyGlobalModeTest, LogsEveryCallThatKeepsItFromReadingTheCurrentMode) {
  for (const auto call : callsOfARead) {
    mac.faults.fail(call, 1);
    beginHere();
    EXPECT_EQ(policy().storedGlobalFnState(), std::nullopt);
    EXPECT_THAT(newLogLines(), ElementsAre(readFailure));
  }
}

TEST_F(ModePolicyGlobalModeTest, SetsTheGlobalModeInTheHardwareFirstAndThenStoresIt) {
  store("globalFnState", 0);
  beginHere();
  policy().setGlobalFnState(FnState::standard, nullptr);
  EXPECT_THAT(happenings, ElementsAre("hardware standard", "show standard", "store globalFnState",
                                      "show global", "log"));
  EXPECT_THAT(newLogLines(), ElementsAre("state notice: Set the global function key mode to "
                                         "standard function keys."));
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
  EXPECT_EQ(policy().lastKnownFnState(), FnState::standard);
}

TEST_F(ModePolicyGlobalModeTest, SetsTheGlobalModeWithoutOneStoredBefore) {
  setPreference(true);
  policy().setGlobalFnState(FnState::special, nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=0}");
  EXPECT_THAT(sentModes(), ElementsAre("0"));
  EXPECT_EQ(preference(), PropertyValue{true});
}

TEST_F(ModePolicyGlobalModeTest, SetsTheGlobalModeOverAnOverrideUntilItsAppIsActivatedAgain) {
  store("globalFnState", 0);
  applyOverrideOfTextEdit(FnState::special);
  beginHere();
  policy().setGlobalFnState(FnState::standard, nullptr);
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=0}}");
  EXPECT_FALSE(policy().isLocalScopeActive());

  bringToFront(textEdit);
  policy().applyStoredFnState();
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_TRUE(policy().isLocalScopeActive());
}

TEST_F(ModePolicyGlobalModeTest, TogglesTheGlobalModeToAndFro) {
  store("globalFnState", 0);
  beginHere();
  policy().toggleGlobalFnState(nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
  policy().toggleGlobalFnState(nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=0}");
  EXPECT_THAT(sentModes(), ElementsAre("1", "0"));
  EXPECT_THAT(newLogLines(),
              ElementsAre("state notice: Set the global function key mode to standard function "
                          "keys.",
                          "state notice: Set the global function key mode to special function "
                          "keys."));
}

TEST_F(ModePolicyGlobalModeTest, TogglesTheStoredGlobalModeAndNotThatOfTheHardware) {
  store("globalFnState", 1);
  setHardware(FnState::special);
  beginHere();
  policy().toggleGlobalFnState(nullptr);
  EXPECT_THAT(sentModes(), ElementsAre("0"));
  EXPECT_EQ(storedSettings(), "{globalFnState=0}");
}

TEST_F(ModePolicyGlobalModeTest, TogglesAGlobalModeThatItHasToInitialiseFirst) {
  setPreference(true);
  beginHere();
  policy().toggleGlobalFnState(nullptr);
  EXPECT_THAT(happenings, ElementsAre("store globalFnState", "log", "show special",
                                      "store globalFnState", "show global", "log"));
  EXPECT_THAT(
      newLogLines(),
      ElementsAre("state notice: Initialized the stored global function key mode from System "
                  "Settings: standard function keys.",
                  "state notice: Set the global function key mode to special function keys."));
  EXPECT_EQ(storedSettings(), "{globalFnState=0}");
}

TEST_F(ModePolicyGlobalModeTest, TogglesTheModeOfTheHardwareWhenItCanBeReadOnlyAtTheSecondTry) {
  mac.faults.fail(PortCall::readServiceProperty, 1);
  beginHere();
  policy().toggleGlobalFnState(nullptr);
  EXPECT_THAT(newLogLines(),
              ElementsAre(readFailure,
                          "state notice: Set the global function key mode to standard function "
                          "keys."));
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
  EXPECT_EQ(settingsWrites(), 1);
}

TEST_F(ModePolicyGlobalModeTest, HasNoGlobalModeToToggleWhenNothingCanBeRead) {
  makeHardwareUnreadable();
  beginHere();
  policy().toggleGlobalFnState(nullptr);
  EXPECT_THAT(newLogLines(), ElementsAre(readFailure));
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_THAT(sentModes(), IsEmpty());
}

}  // namespace
}  // namespace keyrow::sim
