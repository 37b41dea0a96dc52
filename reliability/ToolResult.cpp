#include "reliability/ToolResult.h"

#include "core/KeyboardFnStates.h"
#include "core/KeyboardNumbers.h"
#include "reliability/StageSights.h"
#include "sim/machine/ModeWords.h"
#include "sim/ports/SimulatedUserDefaults.h"

namespace keyrow::reliability {

namespace {

std::string wrongOverride(sim::Stage& stage, const std::vector<std::string>& arguments) {
  // Whoever writes a name or a path leaves the identifier to the command.
  if (arguments.size() < 3 || !stage.mac.applications.isInstalled(arguments[2])) return {};
  const auto mode = arguments.size() > 3 ? sim::modeOfWord(arguments[3]) : std::nullopt;
  if (stage.storedFnStates().local(arguments[2]) == mode) return {};
  return "the command has left another override of " + arguments[2];
}

std::string wrongKeyboard(sim::Stage& stage, const std::vector<std::string>& arguments) {
  if (arguments.size() < 4) return {};
  const auto numbers = keyboardNumbersFromText(arguments[2]);
  if (!numbers) return {};
  sim::SimulatedUserDefaults defaults{stage.mac, stage.keyrowDomain()};
  const auto mode = KeyboardFnStates{defaults}.of(*numbers);
  return mode == sim::modeOfWord(arguments[3]) ? ""
                                               : "the command has left a keyboard another mode";
}

}  // namespace

std::string wrongResult(sim::Stage& stage, const sim::RunTool& run) {
  if (run.isInBackground || run.user || stage.toolExitStatus() != 0 || run.arguments.size() < 2)
    return {};
  const auto& arguments = run.arguments;
  if (arguments[0] == "override") return wrongOverride(stage, arguments);
  if (arguments[0] == "keyboard") return wrongKeyboard(stage, arguments);
  if (arguments[0] != "mode") return {};
  const auto mode = sim::modeOfWord(arguments[1]);
  if (!mode || stage.storedFnStates().global() == mode) return {};
  return "the command has left another global mode";
}

}  // namespace keyrow::reliability
