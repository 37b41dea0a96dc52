#pragma once

#include <cstdint>
#include <expected>
#include <string>
#include <vector>

#include "sim/scenario/Scenario.h"

namespace keyrow::reliability {

/// What came of trying one thing after the other.
struct SweepResult {
  /// How many were tried.
  std::uint64_t pointCount = 0;
  /// What was wrong, and where.
  std::vector<std::string> problems;

  SweepResult& operator+=(SweepResult other);
};

/// All scenarios in a folder, or what is wrong with one of them.
std::expected<std::vector<sim::Scenario>, std::string> scenariosIn(const std::string& folder);

/// Plays what happens in a scenario, whatever it expects, once for each of its port calls
/// that can fail, with just that one failing, and checks the promises after every line.
SweepResult sweepFaults(const sim::Scenario& scenario);

/// The same, once for each pair of port calls with just these two failing.
SweepResult sweepPairs(const sim::Scenario& scenario);

/// Plays what happens in a scenario, kills Keyrow at one of its port calls, and launches it
/// again: nothing stored is lost, and the keyboard is in the right mode. Once for each port
/// call during which Keyrow is alone.
SweepResult sweepCrashes(const sim::Scenario& scenario);

/// Launches eight instances at various intervals, some of which do not answer, or cannot be
/// ended: in the end one is left, or the log says why not. Once for each set of instances
/// that hang, each way of hanging, and each interval.
SweepResult sweepTakeovers();

}  // namespace keyrow::reliability
