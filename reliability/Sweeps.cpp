#include "reliability/Sweeps.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "sim/scenario/ScenarioParser.h"

namespace keyrow::reliability {

SweepResult& SweepResult::operator+=(SweepResult other) {
  pointCount += other.pointCount;
  std::ranges::move(other.problems, std::back_inserter(problems));
  return *this;
}

std::vector<sim::Scenario> scenariosIn(const std::string& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator{folder}) {
    files.push_back(entry.path());
  }
  std::ranges::sort(files);
  std::vector<sim::Scenario> scenarios;
  for (const auto& path : files) {
    std::ifstream file{path};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    if (auto scenario = sim::parseScenario(path.stem().string(), text)) {
      scenarios.push_back(*std::move(scenario));
    }
  }
  return scenarios;
}

}  // namespace keyrow::reliability
