#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "app/AppDelegate.h"
#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

constexpr auto textEdit = "com.apple.TextEdit";

const std::string restoredSpecial =
    "state notice: Restored the global function key mode before termination: special function "
    "keys.";
const std::string persistedSpecial =
    "state info: Persisted the global function key mode to NSUserDefaults for application "
    "termination: standardFunctionKeys=false";

/// The override of TextEdit, standard, is in force over the global mode, special.
class AppDelegateTerminationTest : public SimulatedMacTest {
 protected:
  void SetUp() override {
    mac.applications.install(textEdit);
    mac.applications.activate(textEdit);
    store("globalFnState", 0);
    store("localFnState", PropertyDictionary{{textEdit, 1}});
    process->launch();
    ASSERT_EQ(mac.hid.modeName(), "standard");
  }
};

TEST_F(AppDelegateTerminationTest, GivesTheGlobalModeBackToHardwareAndSystemPreference) {
  store("lastSeenFnStatePreference", 1);
  setPreference(true);
  process->terminate();
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_EQ(preference(), PropertyValue{false});
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
  EXPECT_EQ(stored("localFnState"), (PropertyDictionary{{textEdit, 1}}));
  EXPECT_FALSE(keyrow().modePolicy().isLocalScopeActive());
  EXPECT_EQ(keyrow().modePolicy().lastKnownFnState(), FnState::special);
  EXPECT_THAT(logLines(), ElementsAre(restoredSpecial, persistedSpecial));
}

TEST_F(AppDelegateTerminationTest, MirrorsTheStandardModeAsTrue) {
  store("globalFnState", 1);
  process->terminate();
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_EQ(preference(), PropertyValue{true});
}

TEST_F(AppDelegateTerminationTest, AHardwareThatRefusesDoesNotKeepItFromMirroring) {
  mac.faults.fail(PortCall::setHidParameter, 1);
  process->terminate();
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_EQ(preference(), PropertyValue{false});
  EXPECT_THAT(logLines(),
              ElementsAre("state error: Failed to restore the global function key mode before "
                          "termination: Failed to write the function key mode.",
                          persistedSpecial));
}

TEST_F(AppDelegateTerminationTest, APreferenceThatCannotBeWrittenIsLogged) {
  mac.faults.fail(PortCall::synchronizePreferences, Faults::always);
  process->terminate();
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_EQ(preference(), std::nullopt);
  EXPECT_THAT(logLines(),
              ElementsAre(restoredSpecial,
                          "state error: Failed to synchronize the global function key mode to "
                          "NSUserDefaults."));
}

TEST_F(AppDelegateTerminationTest, LeavesNothingOpen) {
  process->terminate();
  EXPECT_EQ(mac.openHandles.count("HidManager"), 0);
  process.reset();
  EXPECT_TRUE(mac.openHandles.all().empty());
}

TEST_F(AppDelegateTerminationTest, BeingKilledLeavesTheModeAsItIsAndNothingOpen) {
  process.reset();
  EXPECT_TRUE(mac.openHandles.all().empty());
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_EQ(preference(), std::nullopt);
  mac.applications.activate(std::nullopt);
  EXPECT_EQ(mac.hid.modeName(), "standard");
}

TEST_F(AppDelegateTerminationTest, TheOverrideAppliesAgainAfterARelaunch) {
  process->terminate();
  process = std::make_unique<SimulatedProcess>(mac, 502);
  process->launch();
  EXPECT_EQ(mac.hid.modeName(), "standard");
  EXPECT_TRUE(keyrow().modePolicy().isLocalScopeActive());
}

}  // namespace
}  // namespace keyrow::sim
