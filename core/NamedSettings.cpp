#include "core/NamedSettings.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

#include "core/KeyNames.h"
#include "core/StoredBefore.h"
#include "core/Words.h"
#include "platform/VirtualKeys.h"

namespace keyrow {

namespace {

constexpr std::string_view shortcutName = "shortcut";
constexpr std::string_view noModifier = "none";

/// Under which keys a setting is stored.
std::vector<std::string_view> keysOf(std::string_view name) {
  if (name == shortcutName) {
    return {settingsKey::localToggleShortcut.begin(), settingsKey::localToggleShortcut.end()};
  }
  return {name};
}

std::string onOrOff(bool isOn) { return isOn ? "on" : "off"; }

const BooleanSettingRow* booleanNamed(std::string_view name) {
  const auto row = std::ranges::find(booleanSettingTable, name, &BooleanSettingRow::key);
  return row == booleanSettingTable.end() ? nullptr : &*row;
}

bool isSwitch(std::string_view name) {
  return booleanNamed(name) || name == settingsKey::SUEnableAutomaticChecks;
}

std::vector<std::string> modifierNames() {
  std::vector<std::string> names{std::string{noModifier}};
  std::ranges::transform(fnReplacementModifierTable, std::back_inserter(names),
                         [](const auto& row) { return std::string{row.second}; });
  return names;
}

/// The code of a key by the name that `makeLocalToggleShortcut` gives it without a character.
std::optional<std::uint16_t> keyCodeNamed(std::string_view name) {
  for (const auto& key : keyNames()) {
    if (isSameWord(key.displayName, name)) return key.keyCode;
  }
  constexpr std::string_view prefix = "KeyCode ";
  if (!isSameWord(name.substr(0, prefix.size()), prefix)) return std::nullopt;
  const auto digits = name.substr(prefix.size());
  std::uint16_t keyCode = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), keyCode);
  const bool isWhole = error == std::errc{} && end == digits.data() + digits.size();
  return isWhole ? std::optional{keyCode} : std::nullopt;
}

/// Modifiers change the flags, and never go down as keys.
bool isModifier(std::uint16_t keyCode) {
  return keyCode >= virtualKey::rightCommand && keyCode <= virtualKey::function;
}

}  // namespace

std::vector<std::string> NamedSettings::names() {
  std::vector<std::string> names;
  names.reserve(booleanSettingTable.size() + 3);
  for (const auto& row : booleanSettingTable) names.emplace_back(row.key);
  names.emplace_back(settingsKey::fnReplacementModifier);
  names.emplace_back(shortcutName);
  names.emplace_back(settingsKey::SUEnableAutomaticChecks);
  return names;
}

std::optional<std::string> NamedSettings::value(std::string_view name) const {
  if (const auto* row = booleanNamed(name)) return onOrOff(use_.settings.isOn(row->setting));
  if (name == settingsKey::fnReplacementModifier) {
    const auto modifier = use_.settings.fnReplacementModifier();
    return std::string{modifier ? rawValue(*modifier) : noModifier};
  }
  if (name == shortcutName) {
    // What a key types depends on the keyboard layout, and two keys can type the same.
    const auto keyCode = use_.settings.localToggleShortcut().keyCode;
    return use_.settings.makeLocalToggleShortcut(keyCode, std::nullopt).displayName;
  }
  if (name == settingsKey::SUEnableAutomaticChecks) return onOrOff(checksAutomatically());
  return std::nullopt;
}

/// As Sparkle decides it.
bool NamedSettings::checksAutomatically() const {
  const auto stored = use_.userDefaults.object(settingsKey::SUEnableAutomaticChecks);
  return stored ? stored->boolValue().value_or(false) : checksByDefault();
}

bool NamedSettings::checksByDefault() const {
  const auto value = use_.bundle.infoValue(settingsKey::SUEnableAutomaticChecks);
  return value && value->boolValue().value_or(false);
}

std::optional<std::string> NamedSettings::problem(std::string_view name,
                                                  std::string_view value) const {
  const auto known = names();
  if (std::ranges::find(known, name) == known.end()) {
    return unknownWord("setting", name, known);
  }
  if (isManaged(name)) return std::string{name} + " is managed by an administrator.";
  if (value == defaultValue) return std::nullopt;
  if (isSwitch(name)) {
    if (switchFromWord(value)) return std::nullopt;
    return std::string{name} + " is on or off, and not " + inQuotes(value) + ".";
  }
  if (name == settingsKey::fnReplacementModifier) {
    const auto modifiers = modifierNames();
    if (std::ranges::find(modifiers, value) != modifiers.end()) return std::nullopt;
    return unknownWord("modifier", value, modifiers);
  }
  const auto keyCode = keyCodeNamed(value);
  if (isSameWord(value, "Escape") || keyCode == escapeKeyCode) {
    return "Escape belongs to the other shortcut.";
  }
  if (keyCode && isModifier(*keyCode)) {
    return std::string{value} + " is a modifier, and no key for a shortcut.";
  }
  if (keyCode) return std::nullopt;
  std::vector<std::string> keys;
  for (const auto& key : keyNames()) keys.emplace_back(key.displayName);
  return unknownWord("key", value, keys);
}

bool NamedSettings::set(std::string_view name, std::string_view value) {
  const bool isStored = value == defaultValue ? reset(name) : store(name, value);
  use_.notificationCenter.post(settingWasSet);
  return isStored;
}

bool NamedSettings::reset(std::string_view name) {
  if (const auto* row = booleanNamed(name)) return use_.settings.reset(row->setting);
  if (name == shortcutName) return use_.settings.resetLocalToggleShortcut();
  if (name == settingsKey::SUEnableAutomaticChecks) return resetAutomaticChecks();
  use_.settings.setFnReplacementModifier(std::nullopt);
  return !use_.userDefaults.object(name);
}

bool NamedSettings::resetAutomaticChecks() {
  constexpr std::array keys{settingsKey::SUEnableAutomaticChecks};
  const StoredBefore before{use_.userDefaults, keys};
  const bool checkedBefore = checksAutomatically();
  // Whoever is told to switch them stores that.
  if (use_.setAutomaticChecks) use_.setAutomaticChecks(checksByDefault());
  use_.userDefaults.removeObject(keys.front());
  if (!use_.userDefaults.object(keys.front())) return true;
  if (use_.setAutomaticChecks) use_.setAutomaticChecks(checkedBefore);
  before.putBack();
  return false;
}

bool NamedSettings::store(std::string_view name, std::string_view value) {
  if (name == settingsKey::fnReplacementModifier) {
    const auto modifier = fnReplacementModifierFromRawValue(value);
    use_.settings.setFnReplacementModifier(modifier);
    return use_.settings.fnReplacementModifier() == modifier;
  }
  if (name == shortcutName) {
    const auto keyCode = keyCodeNamed(value);
    return keyCode && use_.settings.setLocalToggleShortcut(
                          use_.settings.makeLocalToggleShortcut(*keyCode, std::nullopt));
  }
  const bool isOn = switchFromWord(value).value_or(false);
  if (const auto* row = booleanNamed(name)) {
    use_.settings.set(row->setting, isOn);
  } else if (use_.setAutomaticChecks) {
    use_.setAutomaticChecks(isOn);
  } else {
    use_.userDefaults.setObject(name, isOn);
  }
  return this->value(name) == onOrOff(isOn);
}

bool NamedSettings::isManaged(std::string_view name) const {
  return std::ranges::any_of(keysOf(name),
                             [this](auto key) { return use_.userDefaults.isManaged(key); });
}

}  // namespace keyrow
