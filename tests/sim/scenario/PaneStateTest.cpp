#include "sim/scenario/PaneState.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using PaneStateTest = SimulatedMacTest;

TEST_F(PaneStateTest, TheDocumentationHasEveryName) {
  std::ifstream file{KEYROW_SOURCE_DIR "/docs/scenarios.md"};
  const std::string text{std::istreambuf_iterator<char>{file}, {}};
  for (const auto& [name, state] : paneState(process->simulatedPlatform())) {
    EXPECT_NE(text.find("`" + name + "`"), std::string::npos) << name;
  }
}

}  // namespace
}  // namespace keyrow::sim
