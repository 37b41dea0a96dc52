#include "input/KeySettings.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "input/KeyEventHandler.h"
#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

/// User defaults that count how often they are read.
class CountingUserDefaults final : public UserDefaults {
 public:
  std::optional<PropertyValue> object(std::string_view key) override {
    ++readCount;
    const auto found = values_.find(key);
    auto value = found == values_.end() ? std::nullopt : std::optional{found->second};
    if (const auto work = std::exchange(afterNextRead, nullptr)) work();
    return value;
  }
  std::uint64_t changeCount() override {
    ++changeCountReadCount;
    return changes_;
  }
  bool isManaged(std::string_view /*key*/) override { return false; }
  ObserverToken observeChanges(std::function<void()> /*handler*/) override { return {}; }
  void setObject(std::string_view key, const PropertyValue& value) override {
    values_.insert_or_assign(std::string{key}, value);
    ++changes_;
  }
  bool synchronize() override { return true; }
  void removeObject(std::string_view key) override {
    values_.erase(std::string{key});
    ++changes_;
  }

  /// Runs once, when something has just been read.
  std::function<void()> afterNextRead;

  int readCount = 0;
  int changeCountReadCount = 0;

 private:
  std::map<std::string, PropertyValue, std::less<>> values_;
  std::uint64_t changes_ = 0;
};

class KeySettingsTest : public SimulatedMacTest {
 protected:
  CountingUserDefaults defaults;
  AppSettings settings{{.userDefaults = defaults,
                        .notificationCenter = process->platform().notificationCenter,
                        .text = process->platform().text}};
  KeySettings keySettings{{.userDefaults = defaults, .settings = settings}};

  /// The values are the settings, when they are read and when they are remembered.
  void expectSettings() {
    for (int time = 0; time < 2; ++time) {
      const auto values = keySettings.current();
      const auto modifier = settings.fnReplacementModifier();
      EXPECT_EQ(values.fnLikeFlags, 0x800000 | (modifier ? deviceFlag(*modifier) : 0));
      EXPECT_EQ(values.localToggleShortcutKeyCode, settings.localToggleShortcutKeyCode());
      EXPECT_EQ(values.applyFnModeToExternalFunctionKeys,
                settings.isOn(BooleanSetting::applyFnModeToExternalFunctionKeys));
      EXPECT_EQ(values.enhancedDiagnosticsEnabled,
                settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled));
    }
  }
};

TEST_F(KeySettingsTest, HasTheDefaultsBeforeAnythingHasChanged) { expectSettings(); }

TEST_F(KeySettingsTest, RemembersEveryModifier) {
  for (const auto& [modifier, name] : fnReplacementModifierTable) {
    settings.setFnReplacementModifier(modifier);
    expectSettings();
  }
  settings.setFnReplacementModifier(std::nullopt);
  expectSettings();
}

TEST_F(KeySettingsTest, RemembersEachSettingApartFromTheOthers) {
  for (const int keyCode : {0, 1, 50, 0x7FFF, 0xFFFF}) {
    defaults.setObject(settingsKey::localToggleShortcutKeyCode, keyCode);
    for (const bool apply : {false, true}) {
      settings.set(BooleanSetting::applyFnModeToExternalFunctionKeys, apply);
      for (const bool enhanced : {false, true}) {
        settings.set(BooleanSetting::enhancedDiagnosticsEnabled, enhanced);
        expectSettings();
      }
    }
  }
}

TEST_F(KeySettingsTest, ReadsAgainOnlyAfterAChange) {
  keySettings.current();
  for (int change = 0; change < 100; ++change) {
    settings.set(BooleanSetting::enhancedDiagnosticsEnabled, change % 2 == 0);
    defaults.readCount = 0;
    EXPECT_EQ(keySettings.current().enhancedDiagnosticsEnabled, change % 2 == 0);
    EXPECT_GT(defaults.readCount, 0);
    defaults.readCount = 0;
    keySettings.current();
    EXPECT_EQ(defaults.readCount, 0);
  }
}

TEST_F(KeySettingsTest, AChangeWhileTheyAreReadIsSeenTheNextTime) {
  // The modifier is read first, and changes right then.
  defaults.afterNextRead = [this] {
    settings.setFnReplacementModifier(FnReplacementModifier::rightCommand);
  };
  EXPECT_EQ(keySettings.current().fnLikeFlags, keyEventFlag::secondaryFn);
  expectSettings();
}

TEST_F(KeySettingsTest, EveryEventIsDecidedByOneReadingOfThem) {
  constexpr std::uint16_t keyF8 = 100;
  constexpr std::uint16_t keyGrave = 50;
  settings.set(BooleanSetting::applyFnModeToExternalFunctionKeys, true);
  settings.set(BooleanSetting::enhancedDiagnosticsEnabled, true);
  const ShortcutCapture capture;
  KeyEventHandler handler{{.keySettings = keySettings,
                           .keyboardSourceMonitor = keyrow().keyboardSourceMonitor(),
                           .functionRowMapper = keyrow().functionRowMapper(),
                           .shortcutCapture = capture,
                           .modePolicy = keyrow().modePolicy(),
                           .mainQueue = process->platform().mainQueue}};
  for (const std::uint16_t keyCode : {std::uint16_t{0}, keyF8, keyGrave}) {
    defaults.changeCountReadCount = 0;
    handler.handleTappedEvent(
        keyEventType::keyDown,
        {.timestamp = 0, .flags = keyEventFlag::secondaryFn, .keyCode = keyCode});
    EXPECT_EQ(defaults.changeCountReadCount, 1) << keyCode;
  }
  // Nobody else reads others: that the key was evaluated is told by these settings.
  EXPECT_THAT(logLines(), ElementsAre("input debug: Evaluated F8: source-unavailable"));
}

}  // namespace
}  // namespace keyrow::sim
