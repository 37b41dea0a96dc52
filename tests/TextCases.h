#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

/// What every `Text` has to answer, whichever platform it is on.
namespace keyrow::textCases {

struct CharacterCount {
  std::string_view text;
  std::size_t characters;
};

inline constexpr CharacterCount characterCounts[]{
    {"", 0},
    {"abc", 3},
    {std::string_view{"a\0b", 3}, 3},
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
};

/// Of bytes that are not UTF-8.
inline constexpr CharacterCount characterCountsOfOtherBytes[]{
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
};

struct LastCharacters {
  std::string_view text;
  std::size_t count;
  std::string_view last;
};

inline constexpr LastCharacters lastCharacters[]{
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
};

struct FirstScalar {
  std::string_view text;
  std::optional<char32_t> scalar;
};

inline constexpr FirstScalar firstScalars[]{
    {"", std::nullopt}, {"abc", U'a'}, {"éa", U'é'},
    {"e\u0301", U'e'},  {"😀", U'😀'}, {std::string_view{"\0a", 2}, U'\0'},
};

/// Letters, and marks, which count among them.
inline constexpr std::u32string_view letters = U"aZßéıǅʰあ漢\u0301\u0903\u20DD";
inline constexpr std::u32string_view noLetters = U"\0019 §^`+€Ⅷ☃😀\u00AD\u2028\uFFFD";

inline constexpr char32_t controls[]{U'\0',     U'\t',     U'\n',        U'\x1B',
                                     U'\x7F',   U'\x9F',   U'\u00AD',    U'\u200D',
                                     U'\u200E', U'\uFEFF', U'\U000E0001'};
inline constexpr std::u32string_view noControls = U" a\u00A0\u0301\u2028\uE000\uFFFD";

struct CaseMapping {
  std::string_view text;
  std::string_view mapped;
};

inline constexpr CaseMapping uppercased[]{
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
};

inline constexpr CaseMapping lowercased[]{
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
};

struct Contains {
  std::string_view text;
  std::string_view part;
  bool contains;
};

/// By the rules of a locale without a dotless i.
inline constexpr Contains caseInsensitiveContains[]{
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
    // In such a locale neither is an i.
    {"MAGİC KEYBOARD", "magic keyboard", false},
    {"magıc keyboard", "magic keyboard", false},
    {"\xFF Apple", "apple", true},
};

}  // namespace keyrow::textCases
