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
  std::vector<std::filesystem::path> files;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator{folder, error}) {
    files.push_back(entry.path());
  }
  if (error) return std::unexpected{folder + ": " + error.message()};
  std::ranges::sort(files);
  std::vector<sim::Scenario> scenarios;
  for (const auto& path : files) {
    const auto text = sim::readScenarioFile(path.string());
    if (!text) return std::unexpected{path.string() + ": " + text.error()};
    auto scenario = sim::parseScenario(path.stem().string(), *text);
    if (!scenario) return std::unexpected{path.string() + " is no scenario"};
    scenarios.push_back(*std::move(scenario));
  }
  return scenarios;
}

}  // namespace keyrow::reliability
