#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "sim/scenario/Command.h"

namespace keyrow::sim {

/// One line of a scenario.
struct Step {
  enum class Kind {
    /// A comment on a line of its own: what a reader is told.
    comment,
    action,
    expectation,
  };

  /// From 1.
  std::size_t line = 0;
  /// Where its first word begins, from 1.
  std::size_t column = 0;
  Kind kind = Kind::comment;
  /// The line without indentation and comment; of a comment, what follows the "#".
  std::string text;
  /// Empty for a comment.
  Play play;
};

/// A parsed scenario.
struct Scenario {
  /// How messages call it: the file's name as the user gave it.
  std::string name;
  std::vector<Step> steps;
};

}  // namespace keyrow::sim
