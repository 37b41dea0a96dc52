#include "tests/core/AppSettingsTest.h"

#include <optional>
#include <ostream>
#include <set>
#include <thread>
#include <utility>

#include "core/FnReplacementModifier.h"
#include "tests/core/ShortcutText.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

TEST_F(AppSettingsTest, AFreshUserHasEverythingOffAndTheGraveAccentAsShortcut) {
  for (const auto& row : booleanSettingTable) EXPECT_FALSE(settings().isOn(row.setting)) << row.key;
  EXPECT_EQ(settings().fnReplacementModifier(), std::nullopt);
  EXPECT_EQ(shortcutText(settings().localToggleShortcut()), "50 \"`\" \"`\"");
  EXPECT_EQ(mac.defaults.writeCount(), 0);
}

/// Under another name it would be lost.
TEST_F(AppSettingsTest, WhatUsersHaveStoredKeepsItsName) {
  EXPECT_THAT(
      settingsKey::all,
      UnorderedElementsAre("globalFnState", "localFnState", "keyboardFnStates",
                           "lastSeenFnStatePreference", "showCapsLockIndicator",
                           "applyFnModeToExternalFunctionKeys", "enhancedDiagnosticsEnabled",
                           "fnReplacementModifier", "localToggleShortcutKeyCode",
                           "localToggleShortcutDisplayName", "localToggleShortcutMenuKeyEquivalent",
                           "hasPromptedAccessibility", "SUEnableAutomaticChecks"));
}

TEST_F(AppSettingsTest, EveryBooleanSettingHasItsRowAndANotificationOfItsOwn) {
  std::set<std::string_view> notifications{
      settingsNotification::LocalToggleShortcutSettingDidChange};
  for (std::size_t index = 0; index < booleanSettingTable.size(); ++index) {
    const auto& row = booleanSettingTable[index];
    EXPECT_EQ(static_cast<std::size_t>(row.setting), index) << row.key;
    EXPECT_TRUE(notifications.insert(row.notification).second) << row.notification;
  }
}

class BooleanSettingTest : public AppSettingsTest,
                           public ::testing::WithParamInterface<BooleanSettingRow> {
 protected:
  const std::string key{GetParam().key};

  bool get() { return settings().isOn(GetParam().setting); }
  void set(bool isOn) { settings().set(GetParam().setting, isOn); }
};

INSTANTIATE_TEST_SUITE_P(, BooleanSettingTest, ::testing::ValuesIn(booleanSettingTable),
                         [](const auto& test) { return std::string{test.param.key}; });

TEST_P(BooleanSettingTest, StoresABooleanAndThenTellsItsObserversAndNoOthers) {
  const std::string notification{GetParam().notification};
  set(true);
  EXPECT_TRUE(get());
  set(false);
  EXPECT_FALSE(get());
  EXPECT_THAT(posted, ElementsAre(notification + " {" + key + "=true}",
                                  notification + " {" + key + "=false}"));
  EXPECT_EQ(storedSettings(), "{" + key + "=false}");
}

TEST_P(BooleanSettingTest, TellsAlsoOfAWriteThatChangesNothing) {
  set(true);
  set(true);
  EXPECT_EQ(posted.size(), 2U);
}

TEST_P(BooleanSettingTest, ReadsBooleansNumbersAndWhatTheToolStoresForThem) {
  const std::vector<std::pair<PropertyValue, bool>> readings{
      {true, true},
      {false, false},
      {1, true},
      {0, false},
      {2, true},
      {-1, true},
      {0.5, true},
      {0.0, false},
      {"true", true},
      {"TRUE", true},
      {"1", true},
      {"YES", true},
      {"yes", true},
      {"Yes", true},
      {"0", false},
      {"NO", false},
      {"no", false},
      {"false", false},
      {"y", false},
      {"2", false},
      {" 1", false},
      {"on", false},
      {"", false},
      {PropertyDictionary{}, false},
      {PropertyDictionary{{"value", true}}, false}};
  for (const auto& [value, expected] : readings) {
    SCOPED_TRACE(propertyText(value));
    store(key, value);
    EXPECT_EQ(get(), expected);
    EXPECT_EQ(stored(key), value);
  }
  EXPECT_THAT(posted, IsEmpty());
  EXPECT_THAT(logLines(), IsEmpty());
}

TEST_P(BooleanSettingTest, PutsABooleanInThePlaceOfAValueOfAnotherType) {
  store(key, "yes");
  set(true);
  EXPECT_EQ(storedSettings(), "{" + key + "=true}");
}

struct StoredModifier {
  FnReplacementModifier modifier;
  std::string stored;

  friend std::ostream& operator<<(std::ostream& out, const StoredModifier& row) {
    return out << row.stored;
  }
};

class FnReplacementModifierTest : public AppSettingsTest,
                                  public ::testing::WithParamInterface<StoredModifier> {};

INSTANTIATE_TEST_SUITE_P(
    , FnReplacementModifierTest,
    ::testing::Values(StoredModifier{FnReplacementModifier::leftControl, "leftControl"},
                      StoredModifier{FnReplacementModifier::rightControl, "rightControl"},
                      StoredModifier{FnReplacementModifier::leftOption, "leftOption"},
                      StoredModifier{FnReplacementModifier::rightOption, "rightOption"},
                      StoredModifier{FnReplacementModifier::leftCommand, "leftCommand"},
                      StoredModifier{FnReplacementModifier::rightCommand, "rightCommand"},
                      StoredModifier{FnReplacementModifier::leftShift, "leftShift"},
                      StoredModifier{FnReplacementModifier::rightShift, "rightShift"}),
    [](const auto& test) { return test.param.stored; });

TEST_P(FnReplacementModifierTest, IsStoredAsItsStringWithoutANotification) {
  const auto& [modifier, string] = GetParam();
  settings().setFnReplacementModifier(modifier);
  EXPECT_EQ(storedSettings(), "{fnReplacementModifier=\"" + string + "\"}");
  EXPECT_EQ(settings().fnReplacementModifier(), modifier);
  EXPECT_THAT(posted, IsEmpty());
}

TEST_P(FnReplacementModifierTest, IsReadFromItsString) {
  store("fnReplacementModifier", GetParam().stored);
  EXPECT_EQ(settings().fnReplacementModifier(), GetParam().modifier);
}

TEST_F(AppSettingsTest, NoReplacementModifierIsStoredByRemovingTheKey) {
  settings().setFnReplacementModifier(FnReplacementModifier::leftShift);
  settings().setFnReplacementModifier(std::nullopt);
  EXPECT_EQ(storedSettings(), "{}");
  EXPECT_EQ(settings().fnReplacementModifier(), std::nullopt);
  EXPECT_THAT(posted, IsEmpty());
}

TEST_F(AppSettingsTest, AnythingButAKnownStringIsNoReplacementModifier) {
  auto values = nonStrings();
  values.insert(values.end(), {"", "fn", "LeftControl", "leftcontrol", "leftControl ", "left",
                               "control", "leftFn"});
  for (const auto& value : values) {
    SCOPED_TRACE(propertyText(value));
    store("fnReplacementModifier", value);
    EXPECT_EQ(settings().fnReplacementModifier(), std::nullopt);
    EXPECT_EQ(stored("fnReplacementModifier"), value);
  }
}

TEST_F(AppSettingsTest, MayBeReadOnAnotherThreadWhileTheMainThreadWrites) {
  std::thread reader{[this] {
    for (int round = 0; round < 200; ++round) {
      EXPECT_THAT(shortcutText(settings().localToggleShortcut()),
                  ::testing::AnyOf("50 \"`\" \"`\"", "10 \"KeyCode 10\" none", "10 \"§\" none",
                                   "10 \"§\" \"§\""));
      EXPECT_NE(settings().fnReplacementModifier(), FnReplacementModifier::leftOption);
    }
  }};
  for (int round = 0; round < 200; ++round) {
    settings().setLocalToggleShortcut({10, "§", "§"});
    settings().setFnReplacementModifier(FnReplacementModifier::leftShift);
    settings().resetLocalToggleShortcut();
  }
  reader.join();
}

}  // namespace
}  // namespace keyrow::sim
