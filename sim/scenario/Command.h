#pragma once

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "sim/scenario/LineReader.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// How playing one line went.
struct Outcome {
  enum class Kind {
    done,
    /// An expectation that does not hold.
    unmet,
    /// An action that cannot be carried out as things stand.
    unplayable,
  };

  Kind kind = Kind::done;
  /// What was expected and what was there; empty when done.
  std::string message;
};

/// Carries a parsed line out.
using Play = std::function<Outcome(Stage&)>;

/// One line of the scenario language.
struct Command {
  /// The words that it begins with, one or two.
  std::string_view words;
  /// The whole line, with what varies in capitals and what may be left out in brackets.
  std::string_view usage;
  std::string_view summary;
  std::string_view example;
  /// Reads the rest of the line.
  Play (*parse)(LineReader& line);
};

/// What happens on the Mac around Keyrow.
std::span<const Command> machineCommands();

/// What happens on the screen: the user at Keyrow's views, permissions, sleep.
std::span<const Command> desktopCommands();

/// What happens to Keyrow, and what its user tells it.
std::span<const Command> keyrowCommands();

/// What has to hold, of the modes and of what is stored and logged.
std::span<const Command> stateExpectations();

/// What has to hold, of what the user sees.
std::span<const Command> desktopExpectations();

/// All actions, and all expectations, group by group.
std::array<std::span<const Command>, 3> actions();
std::array<std::span<const Command>, 2> expectations();

/// An outcome "expected ..., but it is ..." when the two differ.
Outcome expectEqual(std::string_view what, const std::string& expected, const std::string& actual);

Outcome unmet(std::string message);
Outcome unplayable(std::string message);
Outcome keyrowNotRunning();

}  // namespace keyrow::sim
