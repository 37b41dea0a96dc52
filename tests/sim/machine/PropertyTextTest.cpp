#include "sim/machine/PropertyText.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace keyrow::sim {
namespace {

struct PropertyTextCase {
  std::optional<PropertyValue> value;
  std::string text;
};

class PropertyTextTest : public ::testing::TestWithParam<PropertyTextCase> {};

TEST_P(PropertyTextTest, WritesTheValueAsScenariosDo) {
  EXPECT_EQ(propertyText(GetParam().value), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(Values, PropertyTextTest,
                         ::testing::ValuesIn(std::vector<PropertyTextCase>{
                             {std::nullopt, "none"},
                             {true, "true"},
                             {false, "false"},
                             {0, "0"},
                             {-1, "-1"},
                             {std::numeric_limits<std::int64_t>::min(), "-9223372036854775808"},
                             {"", "\"\""},
                             {"G Pro", "\"G Pro\""},
                             {"none", "\"none\""},
                             {"3", "\"3\""},
                             {"a\"b\\c\nd", "\"a\\\"b\\\\c\\nd\""},
                             {"é😀", "\"é😀\""},
                             {PropertyDictionary{}, "{}"},
                             {PropertyDictionary{{"a", 1}}, "a=1"},
                             {PropertyDictionary{
                                  {"b", "x"}, {"a", true}, {"c", PropertyDictionary{{"d", -3}}}},
                              "a=true b=\"x\" c={d=-3}"},
                         }));

TEST(PropertyTextNumberTest, AFloatingPointNumberNeverReadsAsAnInteger) {
  EXPECT_EQ(propertyText(0.0), "0.0");
  EXPECT_EQ(propertyText(1.0), "1.0");
  EXPECT_EQ(propertyText(-2.0), "-2.0");
  EXPECT_EQ(propertyText(1e20), "1e+20");
}

TEST(PropertyTextNumberTest, AFloatingPointNumberReadsBackAsItself) {
  EXPECT_EQ(propertyText(0.5), "0.5");
  EXPECT_EQ(propertyText(0.1), "0.1");
  EXPECT_EQ(propertyText(1234567.25), "1234567.25");
  EXPECT_EQ(std::stod(propertyText(1.0 / 3)), 1.0 / 3);
}

TEST(QuotedTest, EscapesQuotationMarksBackslashesAndControlCharactersOnly) {
  EXPECT_EQ(quoted(""), "\"\"");
  EXPECT_EQ(quoted("plain text"), "\"plain text\"");
  EXPECT_EQ(quoted("say \"hi\""), "\"say \\\"hi\\\"\"");
  EXPECT_EQ(quoted("\\"), "\"\\\\\"");
  EXPECT_EQ(quoted("\\n"), "\"\\\\n\"");
  EXPECT_EQ(quoted("\n\n"), "\"\\n\\n\"");
  EXPECT_EQ(quoted("\t'{}="), "\"\\t'{}=\"");
  EXPECT_EQ(quoted("\x1B[31m\x7F"), "\"\\u{1B}[31m\\u{7F}\"");
}

}  // namespace
}  // namespace keyrow::sim
