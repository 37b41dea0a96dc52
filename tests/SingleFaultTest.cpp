#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"
#include "tests/StageChecks.h"

namespace keyrow::sim {
namespace {

std::vector<Scenario> allScenarios() {
  std::vector<Scenario> scenarios;
  for (const auto& entry : std::filesystem::directory_iterator{KEYROW_SOURCE_DIR "/scenarios"}) {
    std::ifstream file{entry.path()};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    if (auto scenario = parseScenario(entry.path().filename().string(), text)) {
      scenarios.push_back(*std::move(scenario));
    }
  }
  return scenarios;
}

struct Replay {
  /// Empty when all went well.
  std::string problem;
  std::uint64_t portCallCount = 0;
};

/// Plays what happens in a scenario, whatever it expects, with one port call failing.
Replay playWithOneFault(const Scenario& scenario, std::uint64_t failingCall) {
  Stage stage;
  stage.mac.faults.failOverallCall(failingCall);
  Replay replay;
  for (const auto& step : scenario.steps) {
    if (step.kind != Step::Kind::action) continue;
    playStep(step, stage);
    replay.problem += leaks(stage);
  }
  replay.portCallCount = stage.mac.faults.overallCallCount();
  replay.problem += problemAfterQuit(stage);
  return replay;
}

TEST(SingleFaultTest, NoSingleFailureInAnyScenarioLeaksOrLeavesTheWrongMode) {
  const auto scenarios = allScenarios();
  EXPECT_GE(scenarios.size(), 15U);
  for (const auto& scenario : scenarios) {
    const auto callCount = playWithOneFault(scenario, 0).portCallCount;
    EXPECT_GT(callCount, 0U) << scenario.name;
    for (std::uint64_t call = 1; call <= callCount; ++call) {
      EXPECT_EQ(playWithOneFault(scenario, call).problem, "")
          << scenario.name << ", with port call " << call << " failing";
    }
  }
}

}  // namespace
}  // namespace keyrow::sim
