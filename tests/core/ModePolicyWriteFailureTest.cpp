#include <functional>
#include <ostream>
#include <tuple>

#include "tests/core/ModePolicyTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// An operation that writes the hardware, in a situation in which it would change the
/// mode: the global mode is special, and TextEdit has the override standard.
struct Operation {
  std::string name;
  /// Whether TextEdit's override is in force before.
  bool startsInLocalScope;
  std::string frontmost;
  std::function<void(ModePolicy&)> run;
  /// What the log says when the write fails.
  std::string failure;

  friend std::ostream& operator<<(std::ostream& out, const Operation& operation) {
    return out << operation.name;
  }
};

std::vector<Operation> operations() {
  const std::string written = ": Failed to write the function key mode.";
  return {
      {"ApplyingAnOverride", false, textEdit, [](auto& policy) { policy.applyStoredFnState(); },
       "Failed to apply the stored local function key mode" + written},
      {"ApplyingTheGlobalMode", true, safari, [](auto& policy) { policy.applyStoredFnState(); },
       "Failed to apply the stored global function key mode" + written},
      {"SettingTheGlobalModeToStandard", true, textEdit,
       [](auto& policy) { policy.setGlobalFnState(FnState::standard, nullptr); },
       "Failed to set the global function key mode to standard function keys" + written},
      {"SettingTheGlobalModeToSpecial", true, textEdit,
       [](auto& policy) { policy.setGlobalFnState(FnState::special, nullptr); },
       "Failed to set the global function key mode to special function keys" + written},
      {"TogglingTheGlobalMode", true, textEdit,
       [](auto& policy) { policy.toggleGlobalFnState(nullptr); },
       "Failed to set the global function key mode to standard function keys" + written},
      {"SettingAnOverrideToStandard", false, safari,
       [](auto& policy) { policy.setLocalFnState(FnState::standard, safari, nullptr); },
       "Failed to set a local function key override for the frontmost app to standard function "
       "keys" +
           written},
      {"SettingAnOverrideToSpecial", false, safari,
       [](auto& policy) { policy.setLocalFnState(FnState::special, safari, nullptr); },
       "Failed to set a local function key override for the frontmost app to special function "
       "keys" +
           written},
      {"CreatingAnOverride", false, safari,
       [](auto& policy) { policy.toggleLocalOverride(nullptr); },
       "Failed to set a local function key override for the frontmost app to standard function "
       "keys" +
           written},
      {"FlippingAnOverride", true, textEdit,
       [](auto& policy) { policy.toggleLocalOverride(nullptr); },
       "Failed to set a local function key override for the frontmost app to special function "
       "keys" +
           written},
      {"ClearingAnOverride", true, textEdit,
       [](auto& policy) { policy.clearLocalOverride(nullptr); },
       "Failed to apply the stored global function key mode" + written},
      {"ClearingWhereThereIsNoOverride", false, safari,
       [](auto& policy) { policy.clearLocalOverride(nullptr); },
       "Failed to set the global function key mode to standard function keys" + written},
      {"RestoringTheGlobalMode", true, textEdit,
       [](auto& policy) { policy.restoreGlobalFnState(); },
       "Failed to restore the global function key mode before termination" + written},
  };
}

class ModePolicyWriteFailureTest
    : public ModePolicyTest,
      public ::testing::WithParamInterface<std::tuple<Operation, PortCall>> {};

TEST_P(ModePolicyWriteFailureTest, ChangesNothingAndIsLogged) {
  const auto& [operation, call] = GetParam();
  store("globalFnState", 0);
  store("localFnState", PropertyDictionary{{textEdit, 1}});
  bringToFront(operation.startsInLocalScope ? textEdit : safari);
  policy().applyStoredFnState();
  bringToFront(operation.frontmost);
  const auto before = policy().lastKnownFnState();
  ASSERT_EQ(policy().isLocalScopeActive(), operation.startsInLocalScope);

  mac.faults.fail(call, 1);
  beginHere();
  operation.run(policy());

  EXPECT_THAT(newLogLines(), ElementsAre("state error: " + operation.failure));
  EXPECT_THAT(happenings, ElementsAre("fault " + std::string{info(call).name}, "log"));
  EXPECT_THAT(sentModes(), IsEmpty());
  EXPECT_EQ(settingsWrites(), 0);
  EXPECT_EQ(policy().lastKnownFnState(), before);
  EXPECT_EQ(policy().isLocalScopeActive(), operation.startsInLocalScope);
}

INSTANTIATE_TEST_SUITE_P(, ModePolicyWriteFailureTest,
                         ::testing::Combine(::testing::ValuesIn(operations()),
                                            ::testing::ValuesIn(callsOfAWrite)),
                         [](const auto& test) {
                           return std::get<Operation>(test.param).name + "_" +
                                  testName(std::get<PortCall>(test.param));
                         });

TEST_F(ModePolicyTest, KeepsAGlobalModeThatItInitialisedAlsoWhenTheWriteThenFails) {
  setPreference(true);
  mac.faults.fail(PortCall::openConnection, 1);
  beginHere();
  policy().toggleGlobalFnState(nullptr);
  EXPECT_EQ(storedSettings(), "{globalFnState=1}");
  EXPECT_EQ(settingsWrites(), 1);
  EXPECT_EQ(policy().lastKnownFnState(), std::nullopt);
}

}  // namespace
}  // namespace keyrow::sim
