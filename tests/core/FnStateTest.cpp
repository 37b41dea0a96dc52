#include "core/FnState.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace keyrow {
namespace {

TEST(FnStateTest, OnlyZeroAndOneAreModes) {
  EXPECT_EQ(fnStateFromRawValue(0), FnState::special);
  EXPECT_EQ(fnStateFromRawValue(1), FnState::standard);
  for (const std::int64_t raw : {std::int64_t{-1}, std::int64_t{2}, std::int64_t{256},
                                 std::int64_t{1} << 32, std::numeric_limits<std::int64_t>::min()}) {
    EXPECT_EQ(fnStateFromRawValue(raw), std::nullopt) << raw;
  }
}

TEST(FnStateTest, FollowsThePreferenceAndHasAnOpposite) {
  EXPECT_EQ(fnStateFromPreference(true), FnState::standard);
  EXPECT_EQ(fnStateFromPreference(false), FnState::special);
  EXPECT_EQ(otherFnState(FnState::special), FnState::standard);
  EXPECT_EQ(otherFnState(FnState::standard), FnState::special);
}

}  // namespace
}  // namespace keyrow
