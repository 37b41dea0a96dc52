#pragma once

#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/scenario/Scenario.h"
#include "sim/scenario/ScenarioError.h"

namespace keyrow::sim {

/// The longest line that a scenario may hold, in bytes.
inline constexpr std::size_t maximumLineLength = 4096;

/// Parses one line; absent for a blank one. `number` is its place in the scenario.
std::expected<std::optional<Step>, LineError> parseLine(std::string_view line, std::size_t number);

/// Parses a whole scenario. Fails with every line that is wrong, or when there is
/// neither an action nor an expectation in it.
std::expected<Scenario, std::vector<ScenarioError>> parseScenario(std::string name,
                                                                  std::string_view text);

/// Reads and parses a scenario file. What keeps it from being read is an error of the scenario
/// as a whole.
std::expected<Scenario, std::vector<ScenarioError>> readScenario(const std::string& path);

}  // namespace keyrow::sim
