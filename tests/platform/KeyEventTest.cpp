#include "platform/KeyEvent.h"

#include <gtest/gtest.h>

namespace keyrow {
namespace {

/// As in CGEventTypes.h: what the system sends has to be understood to the bit.
TEST(KeyEventTest, HasTheSystemsTypesAndFlags) {
  EXPECT_EQ(keyEventType::keyDown, 10U);
  EXPECT_EQ(keyEventType::keyUp, 11U);
  EXPECT_EQ(keyEventType::flagsChanged, 12U);
  EXPECT_EQ(keyEventType::tapDisabledByTimeout, 0xFFFFFFFEU);
  EXPECT_EQ(keyEventType::tapDisabledByUserInput, 0xFFFFFFFFU);
  EXPECT_EQ(keyEventFlag::shift, 0x20000U);
  EXPECT_EQ(keyEventFlag::control, 0x40000U);
  EXPECT_EQ(keyEventFlag::option, 0x80000U);
  EXPECT_EQ(keyEventFlag::command, 0x100000U);
  EXPECT_EQ(keyEventFlag::secondaryFn, 0x800000U);
}

}  // namespace
}  // namespace keyrow
