#include <set>
#include <string>

#include "reliability/Session.h"
#include "reliability/Sweeps.h"

namespace keyrow::reliability {

namespace {

struct Replay {
  /// Empty when all went well.
  std::string problem;
  std::uint64_t callCount = 0;
};

Replay playWithFaults(const sim::Scenario& scenario, std::set<std::uint64_t> failingCalls) {
  Session session;
  session.disturb();
  session.stage.mac.faults.failOverallCalls(std::move(failingCalls));
  Replay replay;
  for (const auto& step : scenario.steps) {
    if (!step.action()) continue;
    const auto problem = session.play(step);
    if (replay.problem.empty() && !problem.empty()) {
      replay.problem = "line " + std::to_string(step.line) + ": " + problem;
    }
  }
  replay.callCount = session.stage.mac.faults.overallCallCount();
  if (replay.problem.empty()) replay.problem = session.end();
  return replay;
}

}  // namespace

SweepResult sweepFaults(const sim::Scenario& scenario) {
  SweepResult result;
  const auto callCount = playWithFaults(scenario, {}).callCount;
  for (std::uint64_t call = 1; call <= callCount; ++call) {
    ++result.pointCount;
    const auto problem = playWithFaults(scenario, {call}).problem;
    if (problem.empty()) continue;
    result.problems.push_back(scenario.name + ", with port call " + std::to_string(call) +
                              " failing: " + problem);
  }
  return result;
}

SweepResult sweepPairs(const sim::Scenario& scenario) {
  SweepResult result;
  const auto callCount = playWithFaults(scenario, {}).callCount;
  for (std::uint64_t first = 1; first <= callCount; ++first) {
    // After a failure there are others than before, and maybe more.
    const auto laterCount = playWithFaults(scenario, {first}).callCount;
    for (auto second = first + 1; second <= laterCount; ++second) {
      ++result.pointCount;
      const auto problem = playWithFaults(scenario, {first, second}).problem;
      if (problem.empty()) continue;
      result.problems.push_back(scenario.name + ", with the port calls " + std::to_string(first) +
                                " and " + std::to_string(second) + " failing: " + problem);
    }
  }
  return result;
}

}  // namespace keyrow::reliability
