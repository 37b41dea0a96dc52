#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <vector>

#include "app/AppLogTexts.h"
#include "reliability/StageChecks.h"
#include "reliability/Sweeps.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::reliability {

namespace {

using namespace std::chrono_literals;

constexpr unsigned instanceCount = 8;
constexpr std::array hangs{sim::Hang::reachable, sim::Hang::unreachable, sim::Hang::unstoppable};
/// From one launch to the next: at once, within the wait for the older ones, just before
/// and just after its end, and long after.
constexpr std::array<std::chrono::nanoseconds, 6> intervals{0ms, 10ms, 500ms, 1990ms, 2500ms, 10s};

struct Grid {
  /// A bit for each instance; the last one always answers.
  unsigned hanging = 0;
  sim::Hang hang = sim::Hang::reachable;
  std::chrono::nanoseconds interval{};
};

std::string text(const Grid& grid) {
  std::string instances;
  for (unsigned index = 0; index < instanceCount; ++index) {
    if ((grid.hanging >> index) & 1U) instances.append(" ").append(std::to_string(index + 1));
  }
  constexpr std::array ways{"reachable", "unreachable", "unstoppable"};
  return "launched every " + std::to_string(grid.interval / 1ms) + " ms, with" +
         (instances.empty() ? " none" : instances) + " hanging " +
         ways.at(static_cast<std::size_t>(grid.hang)) + ": ";
}

/// An application with an override is in front, so whoever leaves the keyboard alone leaves
/// it in the wrong mode.
void prepare(sim::Stage& stage) {
  for (const auto* line :
       {"install com.example.one", "launch keyrow", "front com.example.one", "click right",
        "choose \"Use F1-F12 in This App Only\"", "quit keyrow"}) {
    sim::playStep(**sim::parseLine(line, 1), stage);
  }
}

std::string problemOf(const Grid& grid) {
  sim::Stage stage;
  prepare(stage);
  stage.beginAction();
  auto& scheduler = stage.mac.scheduler;
  std::vector<sim::SimulatedProcess*> launched;
  for (unsigned index = 0; index < instanceCount; ++index) {
    scheduler.schedule(grid.interval * index, [&stage, &grid, &launched, index] {
      auto& process = stage.startKeyrow();
      launched.push_back(&process);
      // Hangs while it still waits for others, where it does.
      if ((grid.hanging >> index) & 1U) {
        stage.mac.scheduler.schedule(1ms, [&process, &grid] {
          if (!process.hasEnded()) process.hang(grid.hang);
        });
      }
      process.launch();
    });
  }
  scheduler.advance(2min);

  const auto log = stage.recentLog();
  const bool isExplained = std::ranges::any_of(
      log, [](const LogEntry& entry) { return entry.message == appLogText::instanceDidNotExit; });
  auto* last = stage.process();
  if (!last) return "none is left";
  if (stage.runningCount() > 1 && (!isExplained || grid.hang == sim::Hang::unreachable)) {
    return std::to_string(stage.runningCount()) + " are left, for no reason that the log tells";
  }
  if (last != launched.back()) return "the last one has gone";
  if (last->isHanging()) return "the last one hangs";
  for (const auto* process : launched) {
    if (process != last && !process->hasEnded() && !process->isHanging()) {
      return "one that answers is left beside the last one";
    }
  }
  if (stage.mac.hid.modeName() != "standard") return "the override is not in force";
  return problemAfterQuit(stage);
}

}  // namespace

SweepResult sweepTakeovers() {
  SweepResult result;
  for (const auto interval : intervals) {
    for (const auto hang : hangs) {
      for (unsigned hanging = 0; hanging < 1U << (instanceCount - 1); ++hanging) {
        const Grid grid{.hanging = hanging, .hang = hang, .interval = interval};
        ++result.pointCount;
        const auto problem = problemOf(grid);
        if (!problem.empty()) result.problems.push_back(text(grid) + problem);
      }
    }
  }
  return result;
}

}  // namespace keyrow::reliability
