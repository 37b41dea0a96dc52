#include "tests/core/ModePolicyTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto systemSettings = "com.apple.SystemSettings";

/// Adopting a mode that is found in the hardware when applications are switched.
class ModePolicySyncTest : public ModePolicyTest {
 protected:
  /// Launches with this mode stored, and with no application in front.
  void launch(FnState global) {
    store("globalFnState", rawValue(global));
    policy().launched();
  }

  void switchTo(std::optional<std::string> bundleIdentifier) {
    bringToFront(std::move(bundleIdentifier));
    policy().switchedApplication();
  }
};

TEST_F(ModePolicySyncTest, StoresAndLogsNothingWithTheModeThatIsStored) {
  launch(FnState::standard);
  switchTo(systemSettings);
  beginHere();
  switchTo(safari);
  EXPECT_THAT(happenings, ElementsAre("show standard", "show global"));
  EXPECT_EQ(settingsWrites(), 0);
}

TEST_F(ModePolicySyncTest, StoresAnotherModeAndSaysWhereItWasFound) {
  launch(FnState::standard);
  switchTo(systemSettings);
  setHardware(FnState::special);
  beginHere();
  switchTo(safari);
  EXPECT_THAT(happenings, ElementsAre("store globalFnState", "log", "show special", "show special",
                                      "show global"));
  setHardware(FnState::standard);
  switchTo(textEdit);
  EXPECT_THAT(newLogLines(),
              ElementsAre("state notice: Synchronized the stored global function key mode from "
                          "hardware after leaving System Settings: special function keys.",
                          "state notice: Synchronized the stored global function key mode from "
                          "hardware during app switch: standard function keys."));
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
}

TEST_F(ModePolicySyncTest, SettlesTheModeAnewWhereNoneIsStoredAnyMore) {
  launch(FnState::special);
  const auto values = nonModes();
  std::vector<std::optional<PropertyValue>> noModes{values.begin(), values.end()};
  noModes.emplace_back(std::nullopt);
  setHardware(FnState::standard);
  for (const auto& noMode : noModes) {
    SCOPED_TRACE(propertyText(noMode));
    store("globalFnState", noMode);
    beginHere();
    switchTo(safari);
    EXPECT_EQ(storedSettings(), "{globalFnState=1}");
    EXPECT_THAT(newLogLines(), IsEmpty());
    // What is no mode any more is news, and what is none still isn't.
    store("globalFnState", 1);
    switchTo(safari);
  }
}

TEST_F(ModePolicySyncTest, LetsTheOverrideOfTheNextApplicationHavePriority) {
  store("localFnState", PropertyDictionary{{textEdit, 0}});
  launch(FnState::special);
  setHardware(FnState::standard);
  beginHere();
  switchTo(textEdit);
  EXPECT_EQ(storedSettings(), "{globalFnState=1 localFnState={com.apple.TextEdit=0}}");
  EXPECT_THAT(sentModes(), ElementsAre("0"));
  EXPECT_TRUE(policy().isLocalScopeActive());
}

TEST_F(ModePolicySyncTest, AdoptsNothingWhileAnOverrideIsInForce) {
  launch(FnState::special);
  applyOverrideOfTextEdit(FnState::standard);
  beginHere();
  switchTo(std::nullopt);
  EXPECT_THAT(happenings, ElementsAre("hardware special", "show special", "show global"));
  EXPECT_THAT(newLogLines(), IsEmpty());
  EXPECT_EQ(settingsWrites(), 0);
}

TEST_F(ModePolicySyncTest, KeepsTheModeStoredWhenItCannotApply) {
  for (const auto call : {PortCall::openConnection, PortCall::setHidParameter}) {
    SCOPED_TRACE(info(call).name);
    restart();
    launch(FnState::special);
    setHardware(FnState::standard);
    mac.faults.fail(call, 1);
    beginHere();
    switchTo(textEdit);
    EXPECT_THAT(newLogLines(),
                ElementsAre("state notice: Synchronized the stored global function key mode from "
                            "hardware during app switch: standard function keys.",
                            "state error: Failed to apply the stored global function key mode: "
                            "Failed to write the function key mode."));
    EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  }
}

}  // namespace
}  // namespace keyrow::sim
