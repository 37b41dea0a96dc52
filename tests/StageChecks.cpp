#include "tests/StageChecks.h"

#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::sim {

std::string leaks(Stage& stage) {
  const auto expectation = parseLine("expect leaks none", 1);
  return playStep(**expectation, stage).message;
}

std::string problemAfterQuit(Stage& stage) {
  stage.mac.faults.clear();
  if (!stage.process()) return {};
  while (auto* process = stage.process()) {
    process->resume();
    process->quit();
  }
  stage.mac.scheduler.runReady();

  const auto global = stage.storedFnStates().global();
  if (!global) return "no global mode is stored";
  if (stage.mac.hid.parameter("HIDFKeyMode") != PropertyValue{rawValue(*global)}) {
    return "the hardware is not in the global mode";
  }
  if (stage.mac.globalPreferences.value(GlobalPreferences::domain,
                                        FnStateController::fnStateDefaultsKey) !=
      PropertyValue{*global == FnState::standard}) {
    return "the system preference is not the global mode";
  }
  return leaks(stage);
}

}  // namespace keyrow::sim
