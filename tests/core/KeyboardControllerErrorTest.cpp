#include "core/KeyboardControllerError.h"

#include <gtest/gtest.h>

namespace keyrow {
namespace {

TEST(KeyboardControllerErrorTest, SaysInWordsWhatFailed) {
  EXPECT_EQ(errorDescription(KeyboardControllerError::readFailed),
            "Failed to read the function key mode.");
  EXPECT_EQ(errorDescription(KeyboardControllerError::writeFailed),
            "Failed to write the function key mode.");
}

TEST(KeyboardControllerErrorTest, HasItsCasesInTheOrderReadThenWrite) {
  EXPECT_EQ(static_cast<int>(KeyboardControllerError::readFailed), 0);
  EXPECT_EQ(static_cast<int>(KeyboardControllerError::writeFailed), 1);
}

}  // namespace
}  // namespace keyrow
