#include "core/KeyboardNumbers.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <utility>

namespace keyrow {
namespace {

TEST(KeyboardNumbersTest, AreReadAsTheyAreWritten) {
  const std::array<std::pair<KeyboardNumbers, std::string>, 6> cases{{
      {{0x046D, 0xC33F}, "046d:c33f"},
      {{0, 0}, "0000:0000"},
      {{1, 0x10000}, "0001:10000"},
      {{0xFFFF, 0xABCDE}, "ffff:abcde"},
      {{0xFFFFFFFF, 0x90000000}, "ffffffff:90000000"},
      {{0x10, 0x0F00}, "0010:0f00"},
  }};
  for (const auto& [numbers, text] : cases) {
    EXPECT_EQ(numbers.text(), text);
    EXPECT_EQ(keyboardNumbersFromText(text), numbers) << text;
  }
}

TEST(KeyboardNumbersTest, MayBeWrittenInCapitalLetters) {
  for (const auto* text : {"046D:C33F", "046d:C33F", "046D:c33f", "046d:C33f"}) {
    EXPECT_EQ(keyboardNumbersFromText(text), (KeyboardNumbers{0x046D, 0xC33F})) << text;
  }
}

TEST(KeyboardNumbersTest, AreWrittenInNoOtherWay) {
  for (const auto* text : {"",
                           ":",
                           "046d",
                           "046d:",
                           ":c33f",
                           "46d:c33f",
                           "046d:33f",
                           "0046d:c33f",
                           "046d:0c33f",
                           "046d:c33f ",
                           " 046d:c33f",
                           "046d: c33f",
                           "046d-c33f",
                           "046dc33f",
                           "0x046d:0xc33f",
                           "046d:c33g",
                           "046d:c33/",
                           "046d:c33:",
                           "046d:c33@",
                           "046d:c33`",
                           "046d:-33f",
                           "046d:+33f",
                           "046d:c33f:0000",
                           "046d::c33f",
                           "1000000000:c33f",
                           "046d:123456789",
                           "046d:\u00e9\u00e9"}) {
    EXPECT_EQ(keyboardNumbersFromText(text), std::nullopt) << text;
  }
}

TEST(KeyboardNumbersTest, AreOrderedByTheMakerFirst) {
  EXPECT_LT((KeyboardNumbers{1, 9}), (KeyboardNumbers{2, 0}));
  EXPECT_LT((KeyboardNumbers{1, 8}), (KeyboardNumbers{1, 9}));
  EXPECT_NE((KeyboardNumbers{1, 8}), (KeyboardNumbers{8, 1}));
}

}  // namespace
}  // namespace keyrow
