#include "sim/SimulatedText.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace keyrow::sim {
namespace {

class SimulatedTextTest : public ::testing::Test {
 protected:
  SimulatedText text;
};

struct CountCase {
  std::string text;
  std::size_t characters;
};

class CharacterCountTest : public SimulatedTextTest,
                           public ::testing::WithParamInterface<CountCase> {};

TEST_P(CharacterCountTest, CountsWhatAReaderSeesAsOne) {
  EXPECT_EQ(text.characterCount(GetParam().text), GetParam().characters);
}

INSTANTIATE_TEST_SUITE_P(Texts, CharacterCountTest,
                         ::testing::ValuesIn(std::vector<CountCase>{
                             {"", 0},
                             {"abc", 3},
                             {std::string{"a\0b", 3}, 3},
                             {"äöü", 3},
                             {"e\u0301", 1},
                             {"e\u0301\u0323x", 2},
                             // A mark without a letter stands for itself.
                             {"\u0301", 1},
                             {"\u0301\u0301a", 2},
                             {"😀😀", 2},
                             {"👍🏽👍🏿", 2},
                             {"👨‍👩‍👧‍👦", 1},
                             {"👨‍👩‍👧‍👦👨‍👩‍👧", 2},
                             // A joiner joins emoji, not letters.
                             {"a\u200Db", 2},
                             {"🇩🇪", 1},
                             {"🇩🇪🇫🇷🇮🇹", 3},
                             // The odd one out.
                             {"🇩🇪🇫", 2},
                             {"1\uFE0F\u20E3", 1},
                             {"\u1112\u1161\u11AB\u1100", 2},
                             {"\r\n", 1},
                             {"\n\r", 2},
                             {"\n\n", 2},
                         }));

INSTANTIATE_TEST_SUITE_P(BytesThatAreNotUtf8, CharacterCountTest,
                         ::testing::ValuesIn(std::vector<CountCase>{
                             {"\xFF", 1},
                             {"a\xFF\xFE"
                              "b",
                              4},
                             // Cut short in the middle of a character.
                             {"a\xE2\x82", 3},
                             {"\xE2\x82"
                              "a",
                              3},
                             // A continuation byte on its own, and an overlong "/".
                             {"\x80", 1},
                             {"\xC0\xAF", 2},
                             // Half a surrogate pair.
                             {"\xED\xA0\x80", 3},
                         }));

struct LastCase {
  std::string text;
  std::size_t count;
  std::string last;
};

class LastCharactersTest : public SimulatedTextTest,
                           public ::testing::WithParamInterface<LastCase> {};

TEST_P(LastCharactersTest, KeepsWholeCharactersFromTheEnd) {
  EXPECT_EQ(text.lastCharacters(GetParam().text, GetParam().count), GetParam().last);
}

INSTANTIATE_TEST_SUITE_P(Texts, LastCharactersTest,
                         ::testing::ValuesIn(std::vector<LastCase>{
                             {"", 0, ""},
                             {"", 3, ""},
                             {"abc", 0, ""},
                             {"abc", 1, "c"},
                             {"abc", 2, "bc"},
                             {"abc", 3, "abc"},
                             {"abc", 4, "abc"},
                             {"xe\u0301", 1, "e\u0301"},
                             {"e\u0301x", 1, "x"},
                             {"e\u0301x", 2, "e\u0301x"},
                             {"a👨‍👩‍👧‍👦b", 2, "👨‍👩‍👧‍👦b"},
                             {"🇩🇪🇫🇷🇮🇹", 2, "🇫🇷🇮🇹"},
                             {"a\r\n", 1, "\r\n"},
                             {"a\xFF\xFE", 2, "\xFF\xFE"},
                             {"ab\xE2\x82", 3, "b\xE2\x82"},
                         }));

TEST_F(SimulatedTextTest, TakesTheFirstScalar) {
  EXPECT_EQ(text.firstScalar(""), std::nullopt);
  EXPECT_EQ(text.firstScalar("abc"), U'a');
  EXPECT_EQ(text.firstScalar("éa"), U'é');
  EXPECT_EQ(text.firstScalar("e\u0301"), U'e');
  EXPECT_EQ(text.firstScalar("😀"), U'😀');
  EXPECT_EQ(text.firstScalar(std::string{"\0a", 2}), U'\0');
  EXPECT_EQ(text.firstScalar("\xFF"), U'\uFFFD');
  EXPECT_EQ(text.firstScalar("\xE2\x82"), U'\uFFFD');
}

TEST_F(SimulatedTextTest, KnowsLettersAndMarks) {
  for (const char32_t letter : std::u32string{U"aZßéıǅʰあ漢\u0301\u0903\u20DD"}) {
    EXPECT_TRUE(text.isLetter(letter)) << std::hex << static_cast<unsigned>(letter);
  }
  for (const char32_t other : std::u32string{U"\0019 §^`+€Ⅷ☃😀\u00AD\u2028\uFFFD"}) {
    EXPECT_FALSE(text.isLetter(other)) << std::hex << static_cast<unsigned>(other);
  }
}

TEST_F(SimulatedTextTest, KnowsControlCharacters) {
  for (const char32_t control : {U'\0', U'\t', U'\n', U'\x1B', U'\x7F', U'\x9F', U'\u00AD',
                                 U'\u200D', U'\u200E', U'\uFEFF', U'\U000E0001'}) {
    EXPECT_TRUE(text.isControl(control)) << std::hex << static_cast<unsigned>(control);
  }
  for (const char32_t other : {U' ', U'a', U'\u00A0', U'\u0301', U'\u2028', U'\uE000', U'\uFFFD'}) {
    EXPECT_FALSE(text.isControl(other)) << std::hex << static_cast<unsigned>(other);
  }
}

using Mapping = std::pair<std::string, std::string>;

class UppercasedTest : public SimulatedTextTest, public ::testing::WithParamInterface<Mapping> {};

TEST_P(UppercasedTest, FollowsUnicode) {
  EXPECT_EQ(text.uppercased(GetParam().first), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Texts, UppercasedTest,
                         ::testing::ValuesIn(std::vector<Mapping>{
                             {"", ""},
                             {"abc XYZ 019 `^", "ABC XYZ 019 `^"},
                             {"äéñ", "ÄÉÑ"},
                             {"ß", "SS"},
                             {"straße", "STRASSE"},
                             {"ẞ", "ẞ"},
                             {"ﬁ", "FI"},
                             {"ﬃ", "FFI"},
                             {"ŉ", "ʼN"},
                             {"ı", "I"},
                             {"i", "I"},
                             {"İ", "İ"},
                             {"ſ", "S"},
                             {"µ", "Μ"},
                             {"ǆ", "Ǆ"},
                             {"ǅ", "Ǆ"},
                             {"ς", "Σ"},
                             {"ΐ", "Ι\u0308\u0301"},
                             {"ÿ", "Ÿ"},
                             {"ⓐ", "Ⓐ"},
                             {"e\u0301", "E\u0301"},
                             {"漢あ😀", "漢あ😀"},
                             {"\xFF", "\uFFFD"},
                         }));

class LowercasedTest : public SimulatedTextTest, public ::testing::WithParamInterface<Mapping> {};

TEST_P(LowercasedTest, FollowsUnicode) {
  EXPECT_EQ(text.lowercased(GetParam().first), GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Texts, LowercasedTest,
                         ::testing::ValuesIn(std::vector<Mapping>{
                             {"", ""},
                             {"ABC xyz 019 `^", "abc xyz 019 `^"},
                             {"ÄÉÑ", "äéñ"},
                             {"ẞ", "ß"},
                             {"ß", "ß"},
                             {"ﬁ", "ﬁ"},
                             {"I", "i"},
                             {"Ǆ", "ǆ"},
                             {"ǅ", "ǆ"},
                             {"Σ", "σ"},
                             {"İ", "i\u0307"},
                             {"Ⓐ", "ⓐ"},
                             {"E\u0301", "e\u0301"},
                             {"漢あ😀", "漢あ😀"},
                             {"\xFF", "\uFFFD"},
                         }));

struct ContainsCase {
  std::string text;
  std::string part;
  bool contains;
};

class ContainsTest : public SimulatedTextTest,
                     public ::testing::WithParamInterface<ContainsCase> {};

TEST_P(ContainsTest, IgnoresCaseOnly) {
  const auto& [whole, part, contains] = GetParam();
  EXPECT_EQ(text.localizedCaseInsensitiveContains(whole, part), contains) << whole << " / " << part;
}

INSTANTIATE_TEST_SUITE_P(Texts, ContainsTest,
                         ::testing::ValuesIn(std::vector<ContainsCase>{
                             {"Apple Inc.", "apple", true},
                             {"APPLE INC.", "apple", true},
                             {"made by aPPle", "APPLE", true},
                             {"Appl", "apple", false},
                             {"App le", "apple", false},
                             {"", "apple", false},
                             {"STRASSE", "straße", true},
                             {"Straße", "STRASSE", true},
                             {"É", "é", true},
                             {"É", "e\u0301", true},
                             {"E\u0301", "é", true},
                             {"e", "é", false},
                             // Half a character is none.
                             {"Applé", "apple", false},
                             {"Applé", "applE\u0301", true},
                             {"q\u0323\u0307", "q\u0307\u0323", true},
                             {"applé apple", "APPLE", true},
                             {"anything", "", false},
                             // In this locale neither is an i.
                             {"MAGİC KEYBOARD", "magic keyboard", false},
                             {"magıc keyboard", "magic keyboard", false},
                             {"\xFF Apple", "apple", true},
                         }));

}  // namespace
}  // namespace keyrow::sim
