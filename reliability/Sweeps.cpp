#include "reliability/Sweeps.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>
#include <utility>

#include "sim/scenario/ScenarioFile.h"
#include "sim/scenario/ScenarioParser.h"

namespace keyrow::reliability {

SweepResult& SweepResult::operator+=(SweepResult other) {
  pointCount += other.pointCount;
  std::ranges::move(other.problems, std::back_inserter(problems));
  return *this;
}

std::expected<std::vector<sim::Scenario>, std::string> scenariosIn(const std::string& folder) {
  const auto files = sim::scenarioFiles(folder);
  if (!files) return std::unexpected{folder + ": " + files.error()};
  std::vector<sim::Scenario> scenarios;
  for (const auto& path : *files) {
    auto scenario = sim::readScenario(path);
    if (!scenario) return std::unexpected{path + ": " + scenario.error().front().message};
    scenario->name = std::filesystem::path{path}.stem().string();
    scenarios.push_back(*std::move(scenario));
  }
  return scenarios;
}

}  // namespace keyrow::reliability
