#include <ostream>

#include "tests/core/ModePolicyTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

/// Who issued a command, how much the log is to tell, and what it then adds.
struct Suffixes {
  std::string name;
  bool enhancedDiagnostics;
  const KeyboardDeviceSource* source;
  std::string app;
  std::string keyboard;

  friend std::ostream& operator<<(std::ostream& out, const Suffixes& suffixes) {
    return out << suffixes.name;
  }
};

class ModePolicySuffixTest : public ModePolicyTest, public ::testing::WithParamInterface<Suffixes> {
 protected:
  void SetUp() override {
    store("enhancedDiagnosticsEnabled", GetParam().enhancedDiagnostics);
    store("globalFnState", 0);
    bringToFront(textEdit);
    beginHere();
  }

  void refuseNextWrite() { mac.faults.fail(PortCall::setHidParameter, 1); }

  const KeyboardDeviceSource* source() const { return GetParam().source; }
  const std::string& app() const { return GetParam().app; }
  const std::string& keyboard() const { return GetParam().keyboard; }
};

INSTANTIATE_TEST_SUITE_P(
    , ModePolicySuffixTest,
    ::testing::Values(
        Suffixes{"Mouse", false, nullptr, "", ""},
        Suffixes{"MouseEnhanced", true, nullptr, " app=com.apple.TextEdit", ""},
        Suffixes{"Keyboard", false, &externalKeyboard(), "", " source=external keyboard"},
        Suffixes{"KeyboardEnhanced", true, &externalKeyboard(), " app=com.apple.TextEdit",
                 " source=external keyboard (Logitech G Pro), transport=USB"}),
    [](const auto& test) { return test.param.name; });

TEST_P(ModePolicySuffixTest, OfAGlobalModeThatWasSet) {
  policy().setGlobalFnState(FnState::standard, source());
  policy().toggleGlobalFnState(source());
  EXPECT_THAT(newLogLines(),
              ElementsAre("state notice: Set the global function key mode to standard function "
                          "keys" +
                              keyboard() + ".",
                          "state notice: Set the global function key mode to special function "
                          "keys" +
                              keyboard() + "."));
}

TEST_P(ModePolicySuffixTest, OfAGlobalModeThatCouldNotBeSet) {
  refuseNextWrite();
  policy().setGlobalFnState(FnState::standard, source());
  EXPECT_THAT(newLogLines(),
              ElementsAre("state error: Failed to set the global function key mode to standard "
                          "function keys: Failed to write the function key mode." +
                          keyboard()));
}

TEST_P(ModePolicySuffixTest, OfAnOverrideThatWasSet) {
  policy().toggleLocalOverride(source());
  policy().setLocalFnState(FnState::special, textEdit, source());
  EXPECT_THAT(newLogLines(),
              ElementsAre("state notice: Set a local function key override for the frontmost app "
                          "to standard function keys" +
                              app() + keyboard() + ".",
                          "state notice: Set a local function key override for the frontmost app "
                          "to special function keys" +
                              app() + keyboard() + "."));
}

TEST_P(ModePolicySuffixTest, OfAnOverrideThatCouldNotBeSet) {
  refuseNextWrite();
  policy().setLocalFnState(FnState::standard, textEdit, source());
  EXPECT_THAT(newLogLines(),
              ElementsAre("state error: Failed to set a local function key override for the "
                          "frontmost app to standard function keys" +
                          app() + ": Failed to write the function key mode." + keyboard()));
}

TEST_P(ModePolicySuffixTest, OfAnOverrideThatWasCleared) {
  store("localFnState", PropertyDictionary{{textEdit, 1}});
  policy().clearLocalOverride(source());
  EXPECT_THAT(newLogLines(),
              ElementsAre("state notice: Cleared the current app override and restored the global "
                          "function key mode" +
                          app() + keyboard() + "."));
}

TEST_P(ModePolicySuffixTest, OfAnOverrideThatCouldNotBeClearedForWantOfAGlobalMode) {
  store("localFnState", PropertyDictionary{{textEdit, 1}});
  store("globalFnState", std::nullopt);
  makeHardwareUnreadable();
  policy().clearLocalOverride(source());
  EXPECT_THAT(newLogLines(),
              ElementsAre(readFailure,
                          "state error: Unable to clear the current app override because no global "
                          "function key mode is stored" +
                              app() + keyboard() + "."));
}

TEST_P(ModePolicySuffixTest, OfAnOverrideThatCouldNotBeClearedForWantOfAWrite) {
  store("localFnState", PropertyDictionary{{textEdit, 1}});
  refuseNextWrite();
  policy().clearLocalOverride(source());
  EXPECT_THAT(newLogLines(),
              ElementsAre("state error: Failed to apply the stored global function key mode: "
                          "Failed to write the function key mode." +
                          keyboard()));
}

TEST_P(ModePolicySuffixTest, OfAGlobalModeToggledWhereThereWasNoOverrideToClear) {
  policy().clearLocalOverride(source());
  EXPECT_THAT(newLogLines(), ElementsAre("state notice: Set the global function key mode to "
                                         "standard function keys" +
                                         keyboard() + "."));
}

TEST_P(ModePolicySuffixTest, AreMissingWhereNoCommandWasGiven) {
  refuseNextWrite();
  policy().applyStoredFnState();
  store("localFnState", PropertyDictionary{{textEdit, 1}});
  refuseNextWrite();
  policy().applyStoredFnState();
  policy().restoreGlobalFnState();
  EXPECT_THAT(newLogLines(),
              ElementsAre("state error: Failed to apply the stored global function key mode: "
                          "Failed to write the function key mode.",
                          "state error: Failed to apply the stored local function key mode: "
                          "Failed to write the function key mode.",
                          "state notice: Restored the global function key mode before "
                          "termination: special function keys."));
}

}  // namespace
}  // namespace keyrow::sim
