#include <algorithm>
#include <array>
#include <cstddef>
#include <iostream>
#include <string>
#include <string_view>

#include "reliability/Sweeps.h"

namespace {

using keyrow::reliability::SweepResult;

int usage() {
  std::cerr << "usage: keyrow-proof faults|pairs|crashes SCENARIOS_FOLDER\n"
               "       keyrow-proof takeovers\n";
  return 2;
}

int report(const SweepResult& result, std::string_view what) {
  for (const auto& problem : result.problems) std::cout << problem << '\n';
  std::cout << result.pointCount << ' ' << what << ", " << result.problems.size()
            << " broken promises\n";
  return result.problems.empty() && result.pointCount > 0 ? 0 : 1;
}

/// The scenarios whose pairs of faults are tried.
constexpr std::array<std::string_view, 3> important{
    "an-override-survives-a-relaunch", "a-change-in-system-settings-becomes-the-global-mode",
    "the-newest-keyrow-takes-over"};

int sweep(std::string_view what, const std::string& folder) {
  const auto scenarios = keyrow::reliability::scenariosIn(folder);
  if (!scenarios) {
    std::cerr << scenarios.error() << '\n';
    return 2;
  }
  SweepResult result;
  std::size_t importantCount = 0;
  for (const auto& scenario : *scenarios) {
    if (what == "faults") result += keyrow::reliability::sweepFaults(scenario);
    if (what == "crashes") result += keyrow::reliability::sweepCrashes(scenario);
    if (std::ranges::find(important, scenario.name) == important.end()) continue;
    ++importantCount;
    if (what == "pairs") result += keyrow::reliability::sweepPairs(scenario);
  }
  if (importantCount != important.size()) {
    std::cerr << folder << " lacks one of the most important scenarios\n";
    return 2;
  }
  if (what == "faults") return report(result, "port calls failed, one at a time");
  if (what == "pairs") return report(result, "pairs of port calls failed");
  return report(result, "kills in the middle of a port call");
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view what = argc > 1 ? argv[1] : "";
  if ((what == "faults" || what == "pairs" || what == "crashes") && argc == 3) {
    return sweep(what, argv[2]);
  }
  if (what == "takeovers" && argc == 2) {
    return report(keyrow::reliability::sweepTakeovers(), "ways of launching eight instances");
  }
  return usage();
}
