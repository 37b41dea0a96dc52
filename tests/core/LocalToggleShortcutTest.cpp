#include "core/LocalToggleShortcut.h"

#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

#include "core/KeyNames.h"
#include "sim/ports/SimulatedText.h"
#include "tests/core/CoreTest.h"
#include "tests/core/ShortcutText.h"

namespace keyrow::sim {
namespace {

struct Key {
  std::uint16_t code;
  std::string_view name;
};

constexpr std::array letters{Key{0, "A"},  Key{1, "S"},  Key{2, "D"},  Key{3, "F"},  Key{4, "H"},
                             Key{5, "G"},  Key{6, "Z"},  Key{7, "X"},  Key{8, "C"},  Key{9, "V"},
                             Key{11, "B"}, Key{12, "Q"}, Key{13, "W"}, Key{14, "E"}, Key{15, "R"},
                             Key{16, "Y"}, Key{17, "T"}, Key{31, "O"}, Key{32, "U"}, Key{34, "I"},
                             Key{35, "P"}, Key{37, "L"}, Key{38, "J"}, Key{40, "K"}, Key{45, "N"},
                             Key{46, "M"}};
constexpr std::array digits{Key{18, "1"}, Key{19, "2"}, Key{20, "3"}, Key{21, "4"}, Key{23, "5"},
                            Key{22, "6"}, Key{26, "7"}, Key{28, "8"}, Key{25, "9"}, Key{29, "0"}};
constexpr std::array punctuation{Key{24, "="}, Key{27, "-"}, Key{30, "]"},  Key{33, "["},
                                 Key{39, "'"}, Key{41, ";"}, Key{42, "\\"}, Key{43, ","},
                                 Key{44, "/"}, Key{47, "."}, Key{50, "`"}};
constexpr std::array namedKeys{Key{48, "Tab"},          Key{49, "Space"},
                               Key{36, "Return"},       Key{117, "Forward Delete"},
                               Key{51, "Delete"},       Key{115, "Home"},
                               Key{119, "End"},         Key{116, "Page Up"},
                               Key{121, "Page Down"},   Key{123, "Left Arrow"},
                               Key{124, "Right Arrow"}, Key{126, "Up Arrow"},
                               Key{125, "Down Arrow"}};
constexpr std::array functionKeys{
    Key{122, "F1"},  Key{120, "F2"},  Key{99, "F3"},   Key{118, "F4"},  Key{96, "F5"},
    Key{97, "F6"},   Key{98, "F7"},   Key{100, "F8"},  Key{101, "F9"},  Key{109, "F10"},
    Key{103, "F11"}, Key{111, "F12"}, Key{105, "F13"}, Key{107, "F14"}, Key{113, "F15"},
    Key{106, "F16"}, Key{64, "F17"},  Key{79, "F18"},  Key{80, "F19"},  Key{90, "F20"}};

std::string asciiLowercase(char capital) { return {static_cast<char>(capital + ('a' - 'A'))}; }

/// The shortcut of every key with a name, as text, by the key's code.
std::map<std::uint16_t, std::string> namedShortcuts() {
  std::map<std::uint16_t, std::string> shortcuts;
  const auto add = [&](const Key& key, std::string equivalent) {
    shortcuts[key.code] = shortcutText({key.code, std::string{key.name}, std::move(equivalent)});
  };
  const std::map<std::string_view, std::string> typed{
      {"Tab", "\t"}, {"Space", " "}, {"Return", "\r"}};

  for (const auto& key : letters) add(key, asciiLowercase(key.name.front()));
  for (const auto& key : digits) add(key, std::string{key.name});
  for (const auto& key : punctuation) add(key, std::string{key.name});
  for (const auto& key : namedKeys) add(key, typed.contains(key.name) ? typed.at(key.name) : "");
  for (const auto& key : functionKeys) add(key, "");
  return shortcuts;
}

/// The section-sign key of ISO keyboards, which has no name in the table.
constexpr std::uint16_t namelessKey = 10;

class LocalToggleShortcutTest : public CoreTest {
 protected:
  SimulatedText text;

  std::string made(std::uint16_t keyCode, std::optional<std::string_view> characters) {
    return shortcutText(makeLocalToggleShortcut(keyCode, characters, text));
  }

  /// What becomes of these characters on a key without a name.
  std::string typed(std::string_view characters) { return made(namelessKey, characters); }
};

TEST_F(LocalToggleShortcutTest, NamesTheEightyKnownKeysAndNoOtherByTheTable) {
  const auto expected = namedShortcuts();
  ASSERT_EQ(expected.size(), 80U);
  for (std::uint32_t code = 0; code <= 0xFFFF; ++code) {
    const auto keyCode = static_cast<std::uint16_t>(code);
    const auto named = expected.find(keyCode);
    const auto number = std::to_string(code);
    ASSERT_EQ(made(keyCode, std::nullopt), named == expected.end()
                                               ? number + " \"KeyCode " + number + "\" none"
                                               : named->second);
  }
}

TEST_F(LocalToggleShortcutTest, PrefersTheTableToTheCharactersTyped) {
  for (const auto& [keyCode, expected] : namedShortcuts()) {
    EXPECT_EQ(made(keyCode, "Ж"), expected);
    EXPECT_EQ(made(keyCode, ""), expected);
  }
}

TEST_F(LocalToggleShortcutTest, ListsEveryKnownKeyOnce) {
  std::set<std::uint16_t> codes;
  for (const auto& key : keyNames()) codes.insert(key.keyCode);
  EXPECT_EQ(keyNames().size(), 80U);
  EXPECT_EQ(codes.size(), 80U);
  EXPECT_EQ(findKeyName(53), nullptr);
}

TEST_F(LocalToggleShortcutTest, HasNoNameForEscape) {
  EXPECT_EQ(made(53, std::nullopt), "53 \"KeyCode 53\" none");
  EXPECT_EQ(made(53, "\x1B"), "53 \"KeyCode 53\" none");
}

TEST_F(LocalToggleShortcutTest, IsTheGraveAccentByDefault) {
  EXPECT_EQ(shortcutText(defaultLocalToggleShortcut()), "50 \"`\" \"`\"");
}

struct Typing {
  std::string name;
  std::string characters;
  std::string displayName;
  std::string equivalent;

  friend std::ostream& operator<<(std::ostream& out, const Typing& typing) {
    return out << typing.characters;
  }
};

class PrintableCharacterTest : public LocalToggleShortcutTest,
                               public ::testing::WithParamInterface<Typing> {};

TEST_P(PrintableCharacterTest, NamesTheKeyByWhatItTypes) {
  const auto& [name, characters, displayName, equivalent] = GetParam();
  EXPECT_EQ(typed(characters), shortcutText({namelessKey, displayName, equivalent}));
}

INSTANTIATE_TEST_SUITE_P(
    Letter, PrintableCharacterTest,
    ::testing::Values(Typing{"SmallLatin", "q", "Q", "q"}, Typing{"CapitalLatin", "Q", "Q", "q"},
                      Typing{"SmallEAcute", "é", "É", "é"}, Typing{"CapitalEAcute", "É", "É", "é"},
                      Typing{"CombiningSequence", "e\u0301", "E\u0301", "e\u0301"},
                      Typing{"CapitalCombiningSequence", "E\u0301", "E\u0301", "e\u0301"},
                      Typing{"SharpS", "ß", "SS", "ß"}, Typing{"CapitalSharpS", "ẞ", "ẞ", "ß"},
                      Typing{"LatinLigature", "\uFB01", "FI", "\uFB01"},
                      Typing{"CapitalCyrillic", "Ж", "Ж", "ж"},
                      Typing{"SmallCyrillic", "ж", "Ж", "ж"}, Typing{"Greek", "ω", "Ω", "ω"},
                      Typing{"Hiragana", "あ", "あ", "あ"}, Typing{"Han", "字", "字", "字"},
                      Typing{"ConjoiningJamo", "\u1112\u1161\u11AB", "\u1112\u1161\u11AB",
                             "\u1112\u1161\u11AB"},
                      Typing{"OutsideTheBasicPlane", "𐐨", "𐐀", "𐐨"}),
    [](const auto& test) { return test.param.name; });

Typing asItIs(std::string name, const std::string& characters) {
  return {std::move(name), characters, characters, characters};
}

INSTANTIATE_TEST_SUITE_P(
    NoLetter, PrintableCharacterTest,
    ::testing::Values(asItIs("SectionSign", "§"), asItIs("Digit", "0"),
                      asItIs("ArabicIndicDigit", "٣"), asItIs("Euro", "€"), asItIs("Space", " "),
                      asItIs("NoBreakSpace", "\u00A0"), asItIs("QuotationMark", "\""),
                      asItIs("Emoji", "😀"), asItIs("EmojiWithSkinTone", "👍🏽"),
                      asItIs("FamilyOfJoinedEmoji", "👨\u200D👩\u200D👧\u200D👦"),
                      asItIs("Flag", "🇫🇷"), asItIs("Keycap", "1\uFE0F\u20E3"),
                      asItIs("SmallCircledA", "ⓐ"), Typing{"CapitalCircledA", "Ⓐ", "Ⓐ", "ⓐ"}),
    [](const auto& test) { return test.param.name; });

class UnprintableCharactersTest : public LocalToggleShortcutTest,
                                  public ::testing::WithParamInterface<std::string> {};

TEST_P(UnprintableCharactersTest, LeaveTheKeyToItsCode) {
  EXPECT_EQ(typed(GetParam()), "10 \"KeyCode 10\" none");
}

INSTANTIATE_TEST_SUITE_P(LineBreak, UnprintableCharactersTest,
                         ::testing::Values("\u000A", "\u000B", "\u000C", "\u000D", "\u0085",
                                           "\u2028", "\u2029", "\r\n"));

INSTANTIATE_TEST_SUITE_P(Control, UnprintableCharactersTest,
                         ::testing::Values(std::string{'\0'}, "\u0001", "\t", "\x1B", "\u001F",
                                           "\u007F", "\u0080", "\u009F"));

/// The platform counts the invisible format characters among the control characters.
INSTANTIATE_TEST_SUITE_P(Format, UnprintableCharactersTest,
                         ::testing::Values("\u00AD", "\u200B", "\u200E", "\uFEFF"));

INSTANTIATE_TEST_SUITE_P(NotOneCharacter, UnprintableCharactersTest,
                         ::testing::Values("", "ab", "éé", "e\u0301e", "§ ", "🇫🇷🇩🇪", "\n\n", "a\n",
                                           "あい"));

TEST_F(LocalToggleShortcutTest, EqualsOnlyAShortcutThatIsTheSameInEveryField) {
  const LocalToggleShortcut shortcut{10, "§", "§"};
  EXPECT_EQ(shortcut, (LocalToggleShortcut{10, "§", "§"}));
  EXPECT_NE(shortcut, (LocalToggleShortcut{11, "§", "§"}));
  EXPECT_NE(shortcut, (LocalToggleShortcut{10, "±", "§"}));
  EXPECT_NE(shortcut, (LocalToggleShortcut{10, "§", ""}));
  EXPECT_NE((LocalToggleShortcut{10, "§", ""}), (LocalToggleShortcut{10, "§", std::nullopt}));
}

}  // namespace
}  // namespace keyrow::sim
