#pragma once

#include <istream>
#include <ostream>

#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::sim {

/// How a prompt is held.
struct PromptStyle {
  /// Whether a person is typing: greets, and shows where to type.
  bool isInteractive = false;
  bool inColour = false;
};

/// Plays lines as they are typed, on one stage, until the input ends or says "exit".
/// Besides the scenario language it knows help, status, menu, settings, log, hardware and exit.
PlayResult runPrompt(std::istream& in, std::ostream& out, PromptStyle style);

/// The whole language, one command after the other, or only what begins with `word`.
void printHelp(std::ostream& out, std::string_view word);

}  // namespace keyrow::sim
