#pragma once

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

/// What happens to Keyrow, and what its user tells it.
std::span<const Command> keyrowCommands();

/// What has to hold.
std::span<const Command> expectations();

/// An outcome "expected ..., but it is ..." when the two differ.
Outcome expectEqual(std::string_view what, const std::string& expected, const std::string& actual);

Outcome unplayable(std::string message);

}  // namespace keyrow::sim
