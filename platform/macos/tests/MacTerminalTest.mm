#include <gtest/gtest.h>

#include <memory>

#include "platform/macos/MacPorts.h"

namespace keyrow::macos {
namespace {

TEST(MacTerminalTest, PrintsLinesAndNotices) {
  const std::unique_ptr<Terminal> terminal = makeTerminal();
  ::testing::internal::CaptureStdout();
  ::testing::internal::CaptureStderr();
  terminal->print("The global mode is standard.");
  terminal->printError("keyrow: Keyrow does not answer.");
  // A file is nobody's terminal.
  const bool isInteractive = terminal->isInteractive();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "The global mode is standard.\n");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "keyrow: Keyrow does not answer.\n");
  EXPECT_FALSE(isInteractive);
}

}  // namespace
}  // namespace keyrow::macos
