#include "core/AppSettings.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

#include "core/StoredBefore.h"

namespace keyrow {

namespace {

bool isYes(std::string text) {
  for (auto& character : text) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character - 'A' + 'a');
  }
  return text == "1" || text == "yes" || text == "true";
}

}  // namespace

void AppSettings::set(BooleanSetting setting, bool isOn) {
  const auto& row = rowOf(setting);
  use_.userDefaults.setObject(row.key, isOn);
  use_.notificationCenter.post(row.notification);
}

bool AppSettings::reset(BooleanSetting setting) {
  const auto& row = rowOf(setting);
  use_.userDefaults.removeObject(row.key);
  use_.notificationCenter.post(row.notification);
  return !use_.userDefaults.object(row.key);
}

ObserverToken AppSettings::observe(BooleanSetting setting, std::function<void()> handler) const {
  return use_.notificationCenter.addObserver(rowOf(setting).notification, std::move(handler));
}

std::optional<FnReplacementModifier> AppSettings::fnReplacementModifier() const {
  const auto stored = string(settingsKey::fnReplacementModifier);
  return stored ? fnReplacementModifierFromRawValue(*stored) : std::nullopt;
}

void AppSettings::setFnReplacementModifier(std::optional<FnReplacementModifier> modifier) {
  if (!modifier) {
    use_.userDefaults.removeObject(settingsKey::fnReplacementModifier);
    return;
  }
  use_.userDefaults.setObject(settingsKey::fnReplacementModifier, rawValue(*modifier));
}

std::uint16_t AppSettings::localToggleShortcutKeyCode() const {
  return usableKeyCode().value_or(graveAccentKeyCode);
}

LocalToggleShortcut AppSettings::localToggleShortcut() const {
  const auto keyCode = usableKeyCode();
  if (!keyCode) return defaultLocalToggleShortcut();

  auto displayName = string(settingsKey::localToggleShortcutDisplayName);
  if (!displayName || displayName->empty()) return makeLocalToggleShortcut(*keyCode, std::nullopt);

  auto equivalent = string(settingsKey::localToggleShortcutMenuKeyEquivalent);
  if (equivalent && equivalent->empty()) equivalent.reset();
  return {*keyCode, std::move(*displayName), std::move(equivalent)};
}

bool AppSettings::setLocalToggleShortcut(const LocalToggleShortcut& shortcut) {
  return storeLocalToggleShortcut(
      {int{shortcut.keyCode}, shortcut.displayName, shortcut.menuKeyEquivalent.value_or("")});
}

bool AppSettings::resetLocalToggleShortcut() { return storeLocalToggleShortcut({}); }

bool AppSettings::storeLocalToggleShortcut(const ShortcutValues& values) {
  const StoredBefore before{use_.userDefaults, settingsKey::localToggleShortcut};
  bool isWhole = true;
  for (std::size_t index = 0; index < values.size(); ++index) {
    const auto key = settingsKey::localToggleShortcut[index];
    const auto& value = values[index];
    if (value) {
      use_.userDefaults.setObject(key, *value);
    } else {
      use_.userDefaults.removeObject(key);
    }
    isWhole = isWhole && use_.userDefaults.object(key) == value;
  }
  if (!isWhole) before.putBack();
  use_.notificationCenter.post(settingsNotification::LocalToggleShortcutSettingDidChange);
  return isWhole;
}

bool AppSettings::hasPromptedAccessibility() const {
  return boolean(settingsKey::hasPromptedAccessibility);
}

void AppSettings::setHasPromptedAccessibility() {
  use_.userDefaults.setObject(settingsKey::hasPromptedAccessibility, true);
}

LocalToggleShortcut AppSettings::makeLocalToggleShortcut(
    std::uint16_t keyCode, std::optional<std::string_view> characters) const {
  return keyrow::makeLocalToggleShortcut(keyCode, characters, use_.text);
}

bool AppSettings::boolean(std::string_view key) const {
  const auto object = use_.userDefaults.object(key);
  if (!object) return false;
  // An unmarked value of `defaults write` is a text.
  const auto* text = object->string();
  return text ? isYes(*text) : object->boolValue().value_or(false);
}

std::optional<std::string> AppSettings::string(std::string_view key) const {
  const auto object = use_.userDefaults.object(key);
  const auto* value = object ? object->string() : nullptr;
  return value ? std::optional{*value} : std::nullopt;
}

std::optional<std::uint16_t> AppSettings::usableKeyCode() const {
  const auto object = use_.userDefaults.object(settingsKey::localToggleShortcutKeyCode);
  const auto* value = object ? object->integer() : nullptr;
  if (!value) return std::nullopt;
  constexpr std::int64_t largest = std::numeric_limits<std::uint16_t>::max();
  const auto keyCode = static_cast<std::uint16_t>(std::clamp<std::int64_t>(*value, 0, largest));
  return keyCode == escapeKeyCode ? std::nullopt : std::optional{keyCode};
}

}  // namespace keyrow
