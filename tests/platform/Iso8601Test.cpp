#include "platform/Iso8601.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace keyrow {
namespace {

using namespace std::chrono_literals;

struct DateCase {
  /// Since 1970-01-01 00:00:00 UTC.
  std::chrono::microseconds date;
  std::string text;
};

class Iso8601Test : public ::testing::TestWithParam<DateCase> {};

TEST_P(Iso8601Test, WritesDateAndTimeInUtcWithMilliseconds) {
  EXPECT_EQ(iso8601Text(std::chrono::system_clock::time_point{GetParam().date}), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Dates, Iso8601Test,
                         ::testing::ValuesIn(std::vector<DateCase>{
                             {0us, "1970-01-01T00:00:00.000Z"},
                             {1'709'285'400'250'000us, "2024-03-01T09:30:00.250Z"},
                             {1'709'251'199'999'000us, "2024-02-29T23:59:59.999Z"},
                             {1'709'251'200'000'000us, "2024-03-01T00:00:00.000Z"},
                             {4'107'542'400'007'000us, "2100-03-01T00:00:00.007Z"},
                         }));

INSTANTIATE_TEST_SUITE_P(BeforeTheEpoch, Iso8601Test,
                         ::testing::ValuesIn(std::vector<DateCase>{
                             {-1'000us, "1969-12-31T23:59:59.999Z"},
                             {-86'400'000'000us, "1969-12-31T00:00:00.000Z"},
                             {-86'399'000'000us, "1969-12-31T00:00:01.000Z"},
                             {-2'208'988'800'000'000us, "1900-01-01T00:00:00.000Z"},
                         }));

INSTANTIATE_TEST_SUITE_P(DropsWhatIsShorterThanAMillisecond, Iso8601Test,
                         ::testing::ValuesIn(std::vector<DateCase>{
                             {1us, "1970-01-01T00:00:00.000Z"},
                             {999us, "1970-01-01T00:00:00.000Z"},
                             {1'999us, "1970-01-01T00:00:00.001Z"},
                             {999'999us, "1970-01-01T00:00:00.999Z"},
                             {1'709'251'199'999'999us, "2024-02-29T23:59:59.999Z"},
                             {-1us, "1969-12-31T23:59:59.999Z"},
                             {-1'001us, "1969-12-31T23:59:59.998Z"},
                         }));

}  // namespace
}  // namespace keyrow
