#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/TimelinePrinter.h"

namespace keyrow::sim {

/// What came of a scenario, and what was printed.
struct Played {
  PlayResult result;
  std::string output;
};

/// Plays a scenario, which is called play.txt.
inline Played play(std::string_view text, Detail detail = Detail::failuresOnly) {
  const auto scenario = parseScenario("play.txt", text);
  EXPECT_TRUE(scenario);
  std::ostringstream out;
  TimelinePrinter printer{out, detail, false};
  return {playScenario(*scenario, printer), out.str()};
}

}  // namespace keyrow::sim
