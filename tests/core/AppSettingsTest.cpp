#include "tests/core/AppSettingsTest.h"

#include <optional>
#include <ostream>
#include <thread>
#include <utility>

#include "core/FnReplacementModifier.h"
#include "tests/core/ShortcutText.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(AppSettingsTest, AFreshUserHasEverythingOffAndTheGraveAccentAsShortcut) {
  EXPECT_FALSE(settings().showCapsLockIndicator());
  EXPECT_FALSE(settings().applyFnModeToExternalFunctionKeys());
  EXPECT_FALSE(settings().enhancedDiagnosticsEnabled());
  EXPECT_EQ(settings().fnReplacementModifier(), std::nullopt);
  EXPECT_EQ(shortcutText(settings().localToggleShortcut()), "50 \"`\" \"`\"");
  EXPECT_EQ(mac.defaults.writeCount(), 0);
}

TEST_F(AppSettingsTest, KeysAndNotificationsHaveTheirNames) {
  EXPECT_EQ(settingsKey::globalFnState, "globalFnState");
  EXPECT_EQ(settingsKey::localFnState, "localFnState");
  EXPECT_EQ(settingsKey::showCapsLockIndicator, "showCapsLockIndicator");
  EXPECT_EQ(settingsKey::applyFnModeToExternalFunctionKeys, "applyFnModeToExternalFunctionKeys");
  EXPECT_EQ(settingsKey::enhancedDiagnosticsEnabled, "enhancedDiagnosticsEnabled");
  EXPECT_EQ(settingsKey::fnReplacementModifier, "fnReplacementModifier");
  EXPECT_EQ(settingsKey::localToggleShortcutKeyCode, "localToggleShortcutKeyCode");
  EXPECT_EQ(settingsKey::localToggleShortcutDisplayName, "localToggleShortcutDisplayName");
  EXPECT_EQ(settingsKey::localToggleShortcutMenuKeyEquivalent,
            "localToggleShortcutMenuKeyEquivalent");
  EXPECT_EQ(settingsKey::hasPromptedAccessibility, "hasPromptedAccessibility");
  EXPECT_EQ(settingsKey::SUEnableAutomaticChecks, "SUEnableAutomaticChecks");
  EXPECT_EQ(settingsNotification::CapsLockIndicatorSettingDidChange,
            "CapsLockIndicatorSettingDidChange");
  EXPECT_EQ(settingsNotification::ExternalFunctionKeysSettingDidChange,
            "ExternalFunctionKeysSettingDidChange");
  EXPECT_EQ(settingsNotification::EnhancedDiagnosticsSettingDidChange,
            "EnhancedDiagnosticsSettingDidChange");
  EXPECT_EQ(settingsNotification::LocalToggleShortcutSettingDidChange,
            "LocalToggleShortcutSettingDidChange");
}

struct BooleanSetting {
  std::string key;
  std::string notification;
  bool (AppSettings::*get)() const;
  void (AppSettings::*set)(bool);

  friend std::ostream& operator<<(std::ostream& out, const BooleanSetting& setting) {
    return out << setting.key;
  }
};

class BooleanSettingTest : public AppSettingsTest,
                           public ::testing::WithParamInterface<BooleanSetting> {
 protected:
  bool get() { return (settings().*GetParam().get)(); }
  void set(bool value) { (settings().*GetParam().set)(value); }
};

INSTANTIATE_TEST_SUITE_P(
    , BooleanSettingTest,
    ::testing::Values(
        BooleanSetting{"showCapsLockIndicator", "CapsLockIndicatorSettingDidChange",
                       &AppSettings::showCapsLockIndicator, &AppSettings::setShowCapsLockIndicator},
        BooleanSetting{"applyFnModeToExternalFunctionKeys", "ExternalFunctionKeysSettingDidChange",
                       &AppSettings::applyFnModeToExternalFunctionKeys,
                       &AppSettings::setApplyFnModeToExternalFunctionKeys},
        BooleanSetting{"enhancedDiagnosticsEnabled", "EnhancedDiagnosticsSettingDidChange",
                       &AppSettings::enhancedDiagnosticsEnabled,
                       &AppSettings::setEnhancedDiagnosticsEnabled}),
    [](const auto& test) { return test.param.key; });

TEST_P(BooleanSettingTest, StoresABooleanAndThenTellsItsObserversAndNoOthers) {
  const auto& [key, notification, getter, setter] = GetParam();
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

TEST_P(BooleanSettingTest, ReadsBooleansAndNumbersAndTakesAllElseForAbsent) {
  const std::vector<std::pair<PropertyValue, bool>> readings{
      {true, true},
      {false, false},
      {1, true},
      {0, false},
      {2, true},
      {-1, true},
      {0.5, true},
      {0.0, false},
      {"true", false},
      {"1", false},
      {"YES", false},
      {"", false},
      {PropertyDictionary{}, false},
      {PropertyDictionary{{"value", true}}, false}};
  for (const auto& [value, expected] : readings) {
    SCOPED_TRACE(propertyText(value));
    store(GetParam().key, value);
    EXPECT_EQ(get(), expected);
    EXPECT_EQ(stored(GetParam().key), value);
  }
  EXPECT_THAT(posted, IsEmpty());
  EXPECT_THAT(logLines(), IsEmpty());
}

TEST_P(BooleanSettingTest, PutsABooleanInThePlaceOfAValueOfAnotherType) {
  store(GetParam().key, "yes");
  set(true);
  EXPECT_EQ(storedSettings(), "{" + GetParam().key + "=true}");
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

constexpr std::array modifiersInOrder{
    FnReplacementModifier::leftControl, FnReplacementModifier::rightControl,
    FnReplacementModifier::leftOption,  FnReplacementModifier::rightOption,
    FnReplacementModifier::leftCommand, FnReplacementModifier::rightCommand,
    FnReplacementModifier::leftShift,   FnReplacementModifier::rightShift};

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

TEST_F(AppSettingsTest, FnReplacementModifiersHaveTheirOrder) {
  for (std::size_t index = 0; index < modifiersInOrder.size(); ++index) {
    EXPECT_EQ(static_cast<std::size_t>(modifiersInOrder[index]), index);
  }
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
