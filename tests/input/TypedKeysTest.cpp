#include <gmock/gmock.h>

#include <set>
#include <string>
#include <vector>

#include "tests/input/KeyEventFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::IsEmpty;

using TypedKeysTest = KeyEventFixture;

// Not even where the log tells most.
TEST_F(TypedKeysTest, LeaveNoTrace) {
  store("enhancedDiagnosticsEnabled", true);
  store("applyFnModeToExternalFunctionKeys", true);
  std::vector<std::string> traces;
  mac.timeline.setListener(
      [&traces](const TimelineEvent& trace) { traces.push_back(textOf(trace)); });
  const std::set<std::uint16_t> topRow{96, 97, 98, 99, 100, 101, 103, 109, 111, 118, 120, 122};
  for (std::uint16_t keyCode = 0; keyCode < 128; ++keyCode) {
    if (topRow.contains(keyCode)) continue;
    for (const auto flags : {std::uint64_t{0}, keyEventFlag::command}) {
      EXPECT_TRUE(passesAndRuns(keyEventType::keyDown, keyCode, flags));
      EXPECT_TRUE(passesAndRuns(keyEventType::keyUp, keyCode, flags));
    }
  }
  mac.scheduler.advance(std::chrono::minutes{1});
  mac.timeline.setListener({});
  EXPECT_THAT(traces, IsEmpty());
  EXPECT_THAT(mac.files, IsEmpty());
}

}  // namespace
}  // namespace keyrow::sim
