#include "platform/PropertyValue.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keyrow {
namespace {

/// The type of a value, by the one accessor that gives something.
std::string typeOf(const PropertyValue& value) {
  std::string types;
  if (value.boolean()) types += "Boolean ";
  if (value.integer()) types += "integer ";
  if (value.floatingPoint()) types += "floating point ";
  if (value.string()) types += "string ";
  if (value.dictionary()) types += "dictionary ";
  return types;
}

TEST(PropertyValueTest, HasTheTypeOfWhatItWasMadeOf) {
  EXPECT_EQ(typeOf(true), "Boolean ");
  EXPECT_EQ(typeOf(0), "integer ");
  EXPECT_EQ(typeOf(std::int64_t{1}), "integer ");
  EXPECT_EQ(typeOf(1.0), "floating point ");
  EXPECT_EQ(typeOf("true"), "string ");
  EXPECT_EQ(typeOf(std::string{"true"}), "string ");
  EXPECT_EQ(typeOf(std::string_view{"true"}), "string ");
  EXPECT_EQ(typeOf(PropertyDictionary{}), "dictionary ");
}

TEST(PropertyValueTest, GivesBackWhatItWasMadeOf) {
  EXPECT_FALSE(*PropertyValue{false}.boolean());
  EXPECT_TRUE(*PropertyValue{true}.boolean());
  EXPECT_EQ(*PropertyValue{-7}.integer(), -7);
  constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
  EXPECT_EQ(*PropertyValue{smallest}.integer(), smallest);
  EXPECT_EQ(*PropertyValue{0.25}.floatingPoint(), 0.25);
  EXPECT_EQ(*PropertyValue{"text"}.string(), "text");
  const PropertyDictionary dictionary{{"a", 1}, {"b", PropertyDictionary{{"c", false}}}};
  EXPECT_EQ(*PropertyValue{dictionary}.dictionary(), dictionary);
}

TEST(PropertyValueTest, EqualsOnlyTheSameValueOfTheSameType) {
  const std::vector<PropertyValue> different{true,
                                             false,
                                             0,
                                             1,
                                             -1,
                                             0.0,
                                             1.0,
                                             "",
                                             "1",
                                             "true",
                                             PropertyDictionary{},
                                             PropertyDictionary{{"a", 1}},
                                             PropertyDictionary{{"a", true}},
                                             PropertyDictionary{{"b", 1}}};
  for (std::size_t left = 0; left < different.size(); ++left) {
    for (std::size_t right = 0; right < different.size(); ++right) {
      EXPECT_EQ(different[left] == different[right], left == right) << left << " and " << right;
    }
  }
}

TEST(PropertyValueTest, IntegersOfBothWidthsAreEqual) {
  EXPECT_EQ(PropertyValue{7}, PropertyValue{std::int64_t{7}});
}

TEST(PropertyValueTest, BoolValueTakesBooleansAsTheyAreAndNumbersByBeingZero) {
  EXPECT_EQ(PropertyValue{true}.boolValue(), true);
  EXPECT_EQ(PropertyValue{false}.boolValue(), false);
  EXPECT_EQ(PropertyValue{1}.boolValue(), true);
  EXPECT_EQ(PropertyValue{-1}.boolValue(), true);
  EXPECT_EQ(PropertyValue{std::int64_t{1} << 40}.boolValue(), true);
  EXPECT_EQ(PropertyValue{0}.boolValue(), false);
  EXPECT_EQ(PropertyValue{0.5}.boolValue(), true);
  EXPECT_EQ(PropertyValue{0.0}.boolValue(), false);
  EXPECT_EQ(PropertyValue{-0.0}.boolValue(), false);
}

TEST(PropertyValueTest, BoolValueIsAbsentForEveryOtherType) {
  EXPECT_EQ(PropertyValue{"1"}.boolValue(), std::nullopt);
  EXPECT_EQ(PropertyValue{"true"}.boolValue(), std::nullopt);
  EXPECT_EQ(PropertyValue{""}.boolValue(), std::nullopt);
  EXPECT_EQ(PropertyValue{PropertyDictionary{}}.boolValue(), std::nullopt);
}

TEST(PropertyDictionaryTest, IsOrderedByKey) {
  const PropertyDictionary dictionary{{"b", 1}, {"a", 2}, {"B", 3}};
  std::vector<std::string> keys;
  for (const auto& [key, value] : dictionary) keys.push_back(key);
  EXPECT_EQ(keys, (std::vector<std::string>{"B", "a", "b"}));
}

}  // namespace
}  // namespace keyrow
