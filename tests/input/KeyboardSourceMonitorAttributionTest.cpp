#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "tests/input/KeyboardSourceMonitorFixture.h"

namespace keyrow::sim {
namespace {

using KeyboardSourceMonitorAttributionTest = KeyboardSourceMonitorFixture;

/// 24 ticks are 1 µs.
constexpr std::uint64_t ticksPerMillisecond = 24'000;
constexpr std::uint64_t event = 1'000'000'000;

constexpr std::uint64_t before(std::uint64_t milliseconds) {
  return event - milliseconds * ticksPerMillisecond;
}
constexpr std::uint64_t after(std::uint64_t milliseconds) {
  return event + milliseconds * ticksPerMillisecond;
}

TEST_F(KeyboardSourceMonitorAttributionTest, WithoutSamplesThereIsNone) {
  EXPECT_EQ(productAt(event), "none");
  EXPECT_EQ(productAt(0), "none");
}

TEST_F(KeyboardSourceMonitorAttributionTest, WithSeveralSamplesTooFarAwayThereIsNone) {
  input(namedKeyboard("A"), before(200));
  input(namedKeyboard("B"), before(81));
  input(namedKeyboard("C"), after(81));
  EXPECT_EQ(productAt(event), "none");
}

TEST_F(KeyboardSourceMonitorAttributionTest, TwoSamplesOfOneKeyboardAreStillSeveral) {
  const auto keyboard = namedKeyboard("A");
  input(keyboard, before(200));
  EXPECT_EQ(productAt(event), "A");
  input(keyboard, before(190));
  EXPECT_EQ(productAt(event), "none");
}

TEST_F(KeyboardSourceMonitorAttributionTest, ASingleSampleMatchesAt200MillisecondsButNotAt300) {
  input(namedKeyboard("A"), before(200));
  EXPECT_EQ(productAt(event), "A");
  EXPECT_EQ(productAt(after(100)), "none");
}

TEST_F(KeyboardSourceMonitorAttributionTest, TheNearestSampleWins) {
  input(namedKeyboard("A"), before(30));
  input(namedKeyboard("B"), before(10));
  input(namedKeyboard("C"), after(20));
  EXPECT_EQ(productAt(event), "B");
  EXPECT_EQ(productAt(before(25)), "A");
  EXPECT_EQ(productAt(after(6)), "C");
}

TEST_F(KeyboardSourceMonitorAttributionTest, ALaterSampleMatchesToo) {
  input(namedKeyboard("Far"), before(300));
  input(namedKeyboard("Later"), after(10));
  EXPECT_EQ(productAt(event), "Later");
}

TEST_F(KeyboardSourceMonitorAttributionTest, OfTwoAtEqualDistanceTheOlderWins) {
  input(namedKeyboard("Older"), before(10));
  input(namedKeyboard("Younger"), after(10));
  EXPECT_EQ(productAt(event), "Older");
}

TEST_F(KeyboardSourceMonitorAttributionTest, TheOlderIsTheOneThatArrivedFirst) {
  input(namedKeyboard("First"), after(10));
  input(namedKeyboard("Second"), before(10));
  EXPECT_EQ(productAt(event), "First");
}

TEST_F(KeyboardSourceMonitorAttributionTest, AnInputOutOfOrderDisturbsNeitherItselfNorTheNextOne) {
  input(namedKeyboard("First"), after(10));
  input(namedKeyboard("Early"), before(10));
  EXPECT_EQ(productAt(before(5)), "Early");
  input(namedKeyboard("Last"), after(50));
  EXPECT_EQ(productAt(before(5)), "Early");
}

TEST_F(KeyboardSourceMonitorAttributionTest, OfSeveralAtOneTimeTheFirstWins) {
  input(namedKeyboard("First"), before(10));
  input(namedKeyboard("Second"), before(10));
  input(namedKeyboard("Third"), before(10));
  EXPECT_EQ(productAt(event), "First");
}

TEST_F(KeyboardSourceMonitorAttributionTest, EventsNearTheBeginningOfTimeAreAttributed) {
  input(namedKeyboard("A"), 0);
  EXPECT_EQ(productAt(0), "A");
  EXPECT_EQ(productAt(1), "A");
  EXPECT_EQ(productAt(100 * ticksPerMillisecond), "A");
}

TEST_F(KeyboardSourceMonitorAttributionTest, DistancesDoNotWrapAround) {
  // Where ticks are nanoseconds, no time is too far in the future to be one.
  restartWithTimebase({.numer = 1, .denom = 1});
  constexpr auto end = std::numeric_limits<std::uint64_t>::max();
  input(namedKeyboard("A"), end);
  EXPECT_EQ(productAt(0), "none");
  EXPECT_EQ(productAt(end), "A");
  EXPECT_EQ(productAt(0), "none");
}

TEST_F(KeyboardSourceMonitorAttributionTest, AskingForgetsSamplesThatAreTooOld) {
  input(namedKeyboard("A"), before(10));
  EXPECT_EQ(productAt(event), "A");
  EXPECT_EQ(productAt(after(1'000)), "none");
  EXPECT_EQ(productAt(event), "none");
}

TEST_F(KeyboardSourceMonitorAttributionTest, AskingKeepsSamplesThatAreLater) {
  input(namedKeyboard("A"), after(5'000));
  EXPECT_EQ(productAt(event), "none");
  EXPECT_EQ(productAt(after(5'000)), "A");
}

TEST_F(KeyboardSourceMonitorAttributionTest, AttributingAnEventDoesNotUseTheSampleUp) {
  input(namedKeyboard("A"), before(10));
  EXPECT_EQ(productAt(event), "A");
  EXPECT_EQ(productAt(event), "A");
}

TEST_F(KeyboardSourceMonitorAttributionTest, The65thInputDropsTheOldestSample) {
  input(namedKeyboard("Oldest"), event);
  const auto other = namedKeyboard("Other");
  for (int count = 0; count < 63; ++count) input(other, after(200));
  EXPECT_EQ(productAt(event), "Oldest");
  input(other, after(200));
  EXPECT_EQ(productAt(event), "none");
}

TEST_F(KeyboardSourceMonitorAttributionTest, HoldsExactlyTheLast64Samples) {
  constexpr std::uint64_t inputCount = 200;
  const auto keyboard = namedKeyboard("A");
  for (std::uint64_t second = 1; second <= inputCount; ++second)
    input(keyboard, after(second * 1'000));

  // Asking in the order of time prunes only what was asked about before.
  std::vector<std::uint64_t> held;
  for (std::uint64_t second = 1; second <= inputCount; ++second) {
    if (productAt(after(second * 1'000)) == "A") held.push_back(second);
  }
  std::vector<std::uint64_t> last64;
  for (std::uint64_t second = inputCount - 63; second <= inputCount; ++second)
    last64.push_back(second);
  EXPECT_EQ(held, last64);
}

struct WindowCase {
  std::string name;
  MachTimebase timebase;
  /// Both windows in ticks.
  std::uint64_t sampleMatchWindow;
  std::uint64_t singleSampleWindow;
};

class KeyboardSourceMonitorWindowTest : public KeyboardSourceMonitorFixture,
                                        public ::testing::WithParamInterface<WindowCase> {
 protected:
  void SetUp() override { restartWithTimebase(GetParam().timebase); }

  const std::uint64_t match = GetParam().sampleMatchWindow;
  const std::uint64_t single = GetParam().singleSampleWindow;
  const std::uint64_t retention = 4 * match;
};

TEST_P(KeyboardSourceMonitorWindowTest, OneOfSeveralSamplesMatchesUpToTheMatchWindow) {
  input(namedKeyboard("Near"), event);
  input(namedKeyboard("Far"), event + 100 * match);
  EXPECT_EQ(productAt(event - match - 1), "none");
  EXPECT_EQ(productAt(event - match), "Near");
  EXPECT_EQ(productAt(event + match), "Near");
  EXPECT_EQ(productAt(event + match + 1), "none");
}

TEST_P(KeyboardSourceMonitorWindowTest, ASingleSampleMatchesEarlierEventsUpToTheSingleWindow) {
  input(namedKeyboard("A"), event);
  EXPECT_EQ(productAt(event - single - 1), "none");
  EXPECT_EQ(productAt(event - single), "A");
}

TEST_P(KeyboardSourceMonitorWindowTest, ASingleSampleMatchesLaterEventsWhileItIsRetained) {
  const auto reach = std::min(single, retention);
  input(namedKeyboard("A"), event);
  EXPECT_EQ(productAt(event + reach), "A");
  EXPECT_EQ(productAt(event + reach + 1), "none");
}

TEST_P(KeyboardSourceMonitorWindowTest, ASampleIsRetainedForFourMatchWindows) {
  const auto now = event + retention;
  input(namedKeyboard("Older"), event - 1);
  input(namedKeyboard("Old"), event);
  // Too far for one of several samples, near enough for a single one.
  input(namedKeyboard("Recent"), now - match - 1);
  EXPECT_EQ(productAt(now), "none");
  EXPECT_EQ(productAt(now + 1), "Recent");
}

INSTANTIATE_TEST_SUITE_P(
    Timebases, KeyboardSourceMonitorWindowTest,
    ::testing::ValuesIn(std::vector<WindowCase>{
        {"AppleSilicon", {.numer = 125, .denom = 3}, 1'920'000, 6'000'000},
        {"Intel", {.numer = 1, .denom = 1}, 80'000'000, 250'000'000},
        // The product of nanoseconds and denominator needs 64 bits.
        {"LargeNumbers", {.numer = 1'000, .denom = 24}, 1'920'000, 6'000'000},
        // Rounded down, once, after the multiplication.
        {"WithRemainder", {.numer = 7, .denom = 3}, 34'285'714, 107'142'857},
        // Without a time base the match window is only 20 ms of nanosecond ticks.
        {"None", {.numer = 0, .denom = 0}, 20'000'000, 250'000'000},
        {"NoNumerator", {.numer = 0, .denom = 3}, 20'000'000, 250'000'000},
    }),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace keyrow::sim
