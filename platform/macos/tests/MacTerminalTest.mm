#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <iostream>
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

TEST(MacTerminalTest, TellsThatNobodyReadsAnyMore) {
  const std::unique_ptr<Terminal> terminal = makeTerminal();
  std::array<int, 2> ends{};
  ASSERT_EQ(pipe(ends.data()), 0);
  std::cout.flush();
  const int output = dup(STDOUT_FILENO);
  dup2(ends[1], STDOUT_FILENO);
  close(ends[1]);
  close(ends[0]);
  const bool isPrinted = terminal->print("standard");
  dup2(output, STDOUT_FILENO);
  close(output);
  std::cout.clear();
  EXPECT_FALSE(isPrinted);
}

}  // namespace
}  // namespace keyrow::macos
