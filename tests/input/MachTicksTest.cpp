#include "input/MachTicks.h"

#include <gtest/gtest.h>

#include <limits>

namespace keyrow {
namespace {

constexpr MachTimebase appleSilicon{.numer = 125, .denom = 3};
constexpr MachTimebase intel{.numer = 1, .denom = 1};
constexpr std::uint64_t farthest = std::numeric_limits<std::uint64_t>::max();

TEST(MachTicksTest, NanosecondsBecomeTicksRoundedDown) {
  EXPECT_EQ(machTicks(125, appleSilicon), 3U);
  EXPECT_EQ(machTicks(124, appleSilicon), 2U);
  EXPECT_EQ(machTicks(farthest, intel), farthest);
  // The product of both would need more than 64 bits.
  EXPECT_EQ(machTicks(farthest, appleSilicon), 442'721'857'769'029'238U);
}

TEST(MachTicksTest, AnEventOfThePastOrOfTheNextSecondHasTicks) {
  constexpr std::uint64_t now = 24'000'000'000;
  constexpr std::uint64_t second = 24'000'000;
  for (const auto timestamp : {std::uint64_t{0}, now - second, now, now + 1, now + second}) {
    EXPECT_EQ(eventTicks(timestamp, now, appleSilicon), timestamp);
  }
  EXPECT_EQ(eventTicks(now + second + 1, now, appleSilicon), 576'576'000U);
}

TEST(MachTicksTest, NanosecondsOfThePresentAreThePresent) {
  // A minute, an hour and a year after the Mac was switched on.
  for (const std::uint64_t seconds : {60U, 3'600U, 31'536'000U}) {
    const auto now = seconds * 24'000'000;
    EXPECT_EQ(eventTicks(seconds * 1'000'000'000, now, appleSilicon), now);
  }
}

TEST(MachTicksTest, WhereATickIsANanosecondNothingChanges) {
  for (const auto timestamp : {std::uint64_t{0}, std::uint64_t{2'000'000'001}, farthest}) {
    EXPECT_EQ(eventTicks(timestamp, 1'000'000'000, intel), timestamp);
  }
}

TEST(MachTicksTest, WithoutATimeBaseNothingChanges) {
  for (const std::uint32_t denom : {0U, 3U}) {
    EXPECT_EQ(eventTicks(farthest, 0, {.numer = 0, .denom = denom}), farthest);
  }
}

}  // namespace
}  // namespace keyrow
