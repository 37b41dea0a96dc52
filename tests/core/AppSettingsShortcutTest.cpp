#include <cstdint>
#include <limits>
#include <optional>
#include <utility>

#include "tests/core/AppSettingsTest.h"
#include "tests/core/ShortcutText.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr auto defaultShortcut = "50 \"`\" \"`\"";

class AppSettingsShortcutTest : public AppSettingsTest {
 protected:
  std::string shortcut() { return shortcutText(settings().localToggleShortcut()); }

  void storeShortcut(std::optional<PropertyValue> keyCode,
                     std::optional<PropertyValue> displayName = std::nullopt,
                     std::optional<PropertyValue> equivalent = std::nullopt) {
    store("localToggleShortcutKeyCode", std::move(keyCode));
    store("localToggleShortcutDisplayName", std::move(displayName));
    store("localToggleShortcutMenuKeyEquivalent", std::move(equivalent));
  }
};

TEST_F(AppSettingsShortcutTest, StoresAShortcutInThreeKeysAndThenTellsItsObserversOnce) {
  settings().setLocalToggleShortcut({10, "§", "§"});
  constexpr auto all =
      "{localToggleShortcutDisplayName=\"§\" localToggleShortcutKeyCode=10 "
      "localToggleShortcutMenuKeyEquivalent=\"§\"}";
  EXPECT_EQ(storedSettings(), all);
  EXPECT_THAT(posted, ElementsAre(std::string{"LocalToggleShortcutSettingDidChange "} + all));
  EXPECT_EQ(shortcut(), "10 \"§\" \"§\"");
}

TEST_F(AppSettingsShortcutTest, StoresAnEmptyStringForNoMenuKeyEquivalentAndReadsNoneBack) {
  settings().setLocalToggleShortcut({200, "KeyCode 200", std::nullopt});
  EXPECT_EQ(stored("localToggleShortcutMenuKeyEquivalent"), PropertyValue{""});
  EXPECT_EQ(shortcut(), "200 \"KeyCode 200\" none");
}

TEST_F(AppSettingsShortcutTest, ReplacesTheWholeShortcut) {
  settings().setLocalToggleShortcut({10, "§", "§"});
  settings().setLocalToggleShortcut({200, "KeyCode 200", std::nullopt});
  settings().setLocalToggleShortcut({65535, "Key", "k"});
  EXPECT_EQ(shortcut(), "65535 \"Key\" \"k\"");
  EXPECT_EQ(posted.size(), 3U);
}

TEST_F(AppSettingsShortcutTest, StoresAShortcutWholeOrNotAtAll) {
  for (const bool hasOne : {false, true}) {
    if (hasOne) settings().setLocalToggleShortcut({10, "§", "§"});
    const auto stored = storedSettings();
    for (std::uint64_t failing = 0; failing < 3; ++failing) {
      mac.faults.fail(PortCall::writeDefaults, 1, failing);
      EXPECT_FALSE(settings().setLocalToggleShortcut({96, "F5", ""})) << failing;
      EXPECT_EQ(storedSettings(), stored) << failing;
    }
  }
  EXPECT_TRUE(settings().setLocalToggleShortcut({96, "F5", ""}));
}

TEST_F(AppSettingsShortcutTest, ResetsAShortcutWholeOrNotAtAll) {
  settings().setLocalToggleShortcut({10, "§", "§"});
  const auto stored = storedSettings();
  for (std::uint64_t failing = 0; failing < 3; ++failing) {
    mac.faults.fail(PortCall::writeDefaults, 1, failing);
    EXPECT_FALSE(settings().resetLocalToggleShortcut()) << failing;
    EXPECT_EQ(storedSettings(), stored) << failing;
  }
  EXPECT_TRUE(settings().resetLocalToggleShortcut());
  EXPECT_EQ(storedSettings(), "{}");
}

TEST_F(AppSettingsShortcutTest, ResettingRemovesTheThreeKeysAndThenTellsItsObserversOnce) {
  storeShortcut(10, "§", "§");
  store("showCapsLockIndicator", true);
  settings().resetLocalToggleShortcut();
  EXPECT_EQ(storedSettings(), "{showCapsLockIndicator=true}");
  EXPECT_THAT(posted,
              ElementsAre("LocalToggleShortcutSettingDidChange {showCapsLockIndicator=true}"));
  EXPECT_EQ(shortcut(), defaultShortcut);
}

TEST_F(AppSettingsShortcutTest, TellsItsObserversOfAResetAlsoWhenNothingWasStored) {
  settings().resetLocalToggleShortcut();
  EXPECT_THAT(posted, ElementsAre("LocalToggleShortcutSettingDidChange {}"));
}

TEST_F(AppSettingsShortcutTest, BringsTheStoredKeyCodeIntoTheRangeOfKeyCodes) {
  const std::vector<std::pair<std::int64_t, int>> readings{
      {0, 0},
      {1, 1},
      {65535, 65535},
      {-1, 0},
      {-4, 0},
      {65536, 65535},
      {70000, 65535},
      {65536 + 53, 65535},
      {std::numeric_limits<std::int64_t>::min(), 0},
      {std::numeric_limits<std::int64_t>::max(), 65535}};
  for (const auto& [storedCode, keyCode] : readings) {
    storeShortcut(storedCode, "Key", "k");
    EXPECT_EQ(shortcut(), std::to_string(keyCode) + " \"Key\" \"k\"") << storedCode;
  }
}

TEST_F(AppSettingsShortcutTest, IsTheDefaultWhereEscapeIsStored) {
  storeShortcut(53, "Escape", "e");
  EXPECT_EQ(shortcut(), defaultShortcut);
  storeShortcut(53);
  EXPECT_EQ(shortcut(), defaultShortcut);
}

TEST_F(AppSettingsShortcutTest, IsTheDefaultWhereNoKeyCodeIsStored) {
  storeShortcut(std::nullopt, "§", "§");
  EXPECT_EQ(shortcut(), defaultShortcut);
}

TEST_F(AppSettingsShortcutTest, IsTheDefaultWhereTheKeyCodeIsNoInteger) {
  for (const auto& value : nonIntegers()) {
    SCOPED_TRACE(propertyText(value));
    storeShortcut(value, "§", "§");
    EXPECT_EQ(shortcut(), defaultShortcut);
  }
}

TEST_F(AppSettingsShortcutTest, KeepsTheStoredNameAlsoForAKeyOfTheTable) {
  storeShortcut(0, "Anything", "x");
  EXPECT_EQ(shortcut(), "0 \"Anything\" \"x\"");
}

TEST_F(AppSettingsShortcutTest, HasNoMenuKeyEquivalentWhereNoneIsStored) {
  auto values = nonStrings();
  values.emplace_back("");
  storeShortcut(0, "A");
  EXPECT_EQ(shortcut(), "0 \"A\" none");
  for (const auto& value : values) {
    SCOPED_TRACE(propertyText(value));
    storeShortcut(0, "A", value);
    EXPECT_EQ(shortcut(), "0 \"A\" none");
  }
}

TEST_F(AppSettingsShortcutTest, IsNamedAfterItsCodeWhereNoDisplayNameIsStored) {
  auto values = nonStrings();
  values.emplace_back("");
  storeShortcut(0, std::nullopt, "x");
  EXPECT_EQ(shortcut(), "0 \"A\" \"a\"");
  for (const auto& value : values) {
    SCOPED_TRACE(propertyText(value));
    storeShortcut(0, value, "x");
    EXPECT_EQ(shortcut(), "0 \"A\" \"a\"");
    storeShortcut(10, value, "x");
    EXPECT_EQ(shortcut(), "10 \"KeyCode 10\" none");
  }
}

TEST_F(AppSettingsShortcutTest, NamesEveryKindOfKeyAfterItsCode) {
  storeShortcut(49);
  EXPECT_EQ(shortcut(), "49 \"Space\" \" \"");
  storeShortcut(115);
  EXPECT_EQ(shortcut(), "115 \"Home\" \"\"");
  storeShortcut(70000);
  EXPECT_EQ(shortcut(), "65535 \"KeyCode 65535\" none");
  storeShortcut(-4);
  EXPECT_EQ(shortcut(), "0 \"A\" \"a\"");
}

TEST_F(AppSettingsShortcutTest, ReadsWithoutWritingOrTellingAnyone) {
  storeShortcut(53, 7, true);
  const auto writes = mac.defaults.writeCount();
  EXPECT_EQ(shortcut(), defaultShortcut);
  EXPECT_EQ(mac.defaults.writeCount(), writes);
  EXPECT_THAT(posted, IsEmpty());
  EXPECT_THAT(logLines(), IsEmpty());
}

TEST_F(AppSettingsShortcutTest, NamesAKeyByWhatItTypes) {
  EXPECT_EQ(shortcutText(settings().makeLocalToggleShortcut(10, "§")), "10 \"§\" \"§\"");
  EXPECT_EQ(shortcutText(settings().makeLocalToggleShortcut(10, "é")), "10 \"É\" \"é\"");
  EXPECT_EQ(shortcutText(settings().makeLocalToggleShortcut(53, std::nullopt)),
            "53 \"KeyCode 53\" none");
  EXPECT_EQ(storedSettings(), "{}");
}

}  // namespace
}  // namespace keyrow::sim
