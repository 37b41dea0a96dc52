#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

#include "sim/scenario/Action.h"

namespace keyrow::sim {

/// One line of a scenario.
struct Step {
  /// A comment on a line of its own: what a reader is told.
  struct Comment {};

  /// From 1.
  std::size_t line = 0;
  /// Where its first word begins, from 1.
  std::size_t column = 0;
  /// The line without indentation and comment; of a comment, what follows the "#".
  std::string text;
  std::variant<Comment, Action, Check> content;

  bool isComment() const { return std::holds_alternative<Comment>(content); }
  bool isExpectation() const { return std::holds_alternative<Check>(content); }
  /// What it does; null for a comment and an expectation.
  const Action* action() const { return std::get_if<Action>(&content); }
};

/// A parsed scenario.
struct Scenario {
  /// How messages call it: the file's name as the user gave it.
  std::string name;
  std::vector<Step> steps;
};

}  // namespace keyrow::sim
