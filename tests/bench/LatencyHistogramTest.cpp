#include "bench/LatencyHistogram.h"

#include <gtest/gtest.h>

#include <limits>

namespace keyrow::sim {
namespace {

TEST(LatencyHistogramTest, HasNothingToTellWithoutDurations) {
  const LatencyHistogram histogram;
  EXPECT_EQ(histogram.perMille(999), 0U);
  EXPECT_EQ(histogram.maximum(), 0U);
}

TEST(LatencyHistogramTest, IsExactForShortDurations) {
  LatencyHistogram histogram;
  for (std::uint64_t duration = 1; duration <= 60; ++duration) histogram.add(duration);
  EXPECT_EQ(histogram.perMille(500), 30U);
  EXPECT_EQ(histogram.perMille(990), 60U);
  EXPECT_EQ(histogram.maximum(), 60U);
}

TEST(LatencyHistogramTest, IsOffByAtMostA32ndForLongOnes) {
  for (const std::uint64_t duration : {64U, 65U, 127U, 128U, 1'000U, 123'456U, 4'000'000'000U}) {
    LatencyHistogram histogram;
    for (int count = 0; count < 9; ++count) histogram.add(duration);
    histogram.add(2 * duration);
    EXPECT_GE(histogram.perMille(900), duration);
    EXPECT_LE(histogram.perMille(900), duration + duration / 32);
    EXPECT_EQ(histogram.perMille(901), 2 * duration);
  }
}

TEST(LatencyHistogramTest, HasRoomForTheLongest) {
  constexpr auto longest = std::numeric_limits<std::uint64_t>::max();
  LatencyHistogram histogram;
  histogram.add(longest);
  EXPECT_EQ(histogram.perMille(1), longest);
  EXPECT_EQ(histogram.maximum(), longest);
}

}  // namespace
}  // namespace keyrow::sim
