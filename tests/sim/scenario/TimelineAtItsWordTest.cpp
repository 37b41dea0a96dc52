#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "sim/scenario/ScenarioFile.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::sim {
namespace {

/// What the timeline prints can be expected as it stands: typed behind "expect" under the line
/// that it was printed under, it holds, and behind "expect no" it does not.
TEST(TimelineAtItsWordTest, EveryEventOfEveryScenarioCanBeExpected) {
  std::size_t eventCount = 0;
  const auto files = scenarioFiles(KEYROW_SOURCE_DIR "/scenarios");
  ASSERT_TRUE(files);
  for (const auto& file : *files) {
    const auto scenario = readScenario(file);
    ASSERT_TRUE(scenario) << file;
    Stage stage;
    std::vector<std::string> printed;
    stage.mac.timeline.setListener(
        [&printed](const TimelineEvent& event) { printed.push_back(textOf(event)); });
    for (const auto& step : scenario->steps) {
      playStep(step, stage);
      for (const auto& text : std::exchange(printed, {})) {
        ++eventCount;
        const auto holds = parseLine("expect " + text, 1);
        ASSERT_TRUE(holds) << file << ": " << text << ": " << holds.error().message;
        EXPECT_EQ(playStep(**holds, stage).message, "") << file << ":" << step.line;
        const auto fails = parseLine("expect no " + text, 1);
        ASSERT_TRUE(fails) << file << ": " << text << ": " << fails.error().message;
        EXPECT_EQ(playStep(**fails, stage).kind, Outcome::Kind::unmet) << file << ": " << text;
      }
    }
  }
  EXPECT_GT(eventCount, 1000U);
}

}  // namespace
}  // namespace keyrow::sim
