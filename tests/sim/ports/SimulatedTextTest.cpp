#include "sim/ports/SimulatedText.h"

#include <gtest/gtest.h>

#include <optional>

#include "tests/TextCases.h"

namespace keyrow::sim {
namespace {

class SimulatedTextTest : public ::testing::Test {
 protected:
  SimulatedText text;
};

class CharacterCountTest : public SimulatedTextTest,
                           public ::testing::WithParamInterface<textCases::CharacterCount> {};

TEST_P(CharacterCountTest, CountsWhatAReaderSeesAsOne) {
  EXPECT_EQ(text.characterCount(GetParam().text), GetParam().characters);
}

INSTANTIATE_TEST_SUITE_P(Texts, CharacterCountTest,
                         ::testing::ValuesIn(textCases::characterCounts));
INSTANTIATE_TEST_SUITE_P(BytesThatAreNotUtf8, CharacterCountTest,
                         ::testing::ValuesIn(textCases::characterCountsOfOtherBytes));

class LastCharactersTest : public SimulatedTextTest,
                           public ::testing::WithParamInterface<textCases::LastCharacters> {};

TEST_P(LastCharactersTest, KeepsWholeCharactersFromTheEnd) {
  EXPECT_EQ(text.lastCharacters(GetParam().text, GetParam().count), GetParam().last);
}

INSTANTIATE_TEST_SUITE_P(Texts, LastCharactersTest, ::testing::ValuesIn(textCases::lastCharacters));

TEST_F(SimulatedTextTest, TakesTheFirstScalar) {
  for (const auto& [whole, scalar] : textCases::firstScalars) {
    EXPECT_EQ(text.firstScalar(whole), scalar) << whole;
  }
}

TEST_F(SimulatedTextTest, KnowsLettersAndMarks) {
  for (const char32_t letter : textCases::letters) {
    EXPECT_TRUE(text.isLetter(letter)) << std::hex << static_cast<unsigned>(letter);
  }
  for (const char32_t other : textCases::noLetters) {
    EXPECT_FALSE(text.isLetter(other)) << std::hex << static_cast<unsigned>(other);
  }
}

TEST_F(SimulatedTextTest, KnowsControlCharacters) {
  for (const char32_t control : textCases::controls) {
    EXPECT_TRUE(text.isControl(control)) << std::hex << static_cast<unsigned>(control);
  }
  for (const char32_t other : textCases::noControls) {
    EXPECT_FALSE(text.isControl(other)) << std::hex << static_cast<unsigned>(other);
  }
}

class UppercasedTest : public SimulatedTextTest,
                       public ::testing::WithParamInterface<textCases::CaseMapping> {};

TEST_P(UppercasedTest, FollowsUnicode) {
  EXPECT_EQ(text.uppercased(GetParam().text), GetParam().mapped);
}

INSTANTIATE_TEST_SUITE_P(Texts, UppercasedTest, ::testing::ValuesIn(textCases::uppercased));

class LowercasedTest : public SimulatedTextTest,
                       public ::testing::WithParamInterface<textCases::CaseMapping> {};

TEST_P(LowercasedTest, FollowsUnicode) {
  EXPECT_EQ(text.lowercased(GetParam().text), GetParam().mapped);
}

INSTANTIATE_TEST_SUITE_P(Texts, LowercasedTest, ::testing::ValuesIn(textCases::lowercased));

class ContainsTest : public SimulatedTextTest,
                     public ::testing::WithParamInterface<textCases::Contains> {};

TEST_P(ContainsTest, IgnoresCaseOnly) {
  const auto& [whole, part, contains] = GetParam();
  EXPECT_EQ(text.localizedCaseInsensitiveContains(whole, part), contains) << whole << " / " << part;
}

INSTANTIATE_TEST_SUITE_P(Texts, ContainsTest,
                         ::testing::ValuesIn(textCases::caseInsensitiveContains));

// Texts are UTF-8, so what becomes of other bytes is each platform's own affair.
TEST_F(SimulatedTextTest, KeepsOrReplacesBytesThatAreNotUtf8) {
  EXPECT_EQ(text.lastCharacters("a\xFF\xFE", 2), "\xFF\xFE");
  EXPECT_EQ(text.lastCharacters("ab\xE2\x82", 3), "b\xE2\x82");
  EXPECT_EQ(text.firstScalar("\xFF"), U'\uFFFD');
  EXPECT_EQ(text.firstScalar("\xE2\x82"), U'\uFFFD');
  EXPECT_EQ(text.uppercased("\xFF"), "\uFFFD");
  EXPECT_EQ(text.lowercased("\xFF"), "\uFFFD");
}

}  // namespace
}  // namespace keyrow::sim
