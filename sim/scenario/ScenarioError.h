#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace keyrow::sim {

/// What is wrong with a line, and where in it.
struct LineError {
  /// In characters, from 1.
  std::size_t column = 1;
  /// For example: expected a duration, such as 0.35s, found "soon".
  std::string message;
};

/// What is wrong with a scenario, and where.
struct ScenarioError {
  /// From 1; 0 for what is wrong with the scenario as a whole.
  std::size_t line = 0;
  std::size_t column = 0;
  std::string message;
};

/// Prints what is wrong with a scenario, each with its place, and no more than one can read.
void printErrors(std::ostream& out, const std::string& name,
                 const std::vector<ScenarioError>& errors);

}  // namespace keyrow::sim
