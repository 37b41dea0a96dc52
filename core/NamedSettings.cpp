#include "core/NamedSettings.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "core/KeyNames.h"
#include "core/Words.h"

namespace keyrow {

namespace {

constexpr std::string_view shortcutName = "shortcut";
constexpr std::string_view noModifier = "none";

constexpr std::array shortcutKeys{settingsKey::localToggleShortcutKeyCode,
                                  settingsKey::localToggleShortcutDisplayName,
                                  settingsKey::localToggleShortcutMenuKeyEquivalent};

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

const KeyName* keyNamed(std::string_view name) {
  const auto names = keyNames();
  const auto key = std::ranges::find_if(
      names, [name](const KeyName& one) { return isSameWord(one.displayName, name); });
  return key == names.end() ? nullptr : &*key;
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
  if (name == shortcutName) return use_.settings.localToggleShortcut().displayName;
  if (name == settingsKey::SUEnableAutomaticChecks) return onOrOff(checksAutomatically());
  return std::nullopt;
}

/// As Sparkle decides it.
bool NamedSettings::checksAutomatically() const {
  constexpr auto key = settingsKey::SUEnableAutomaticChecks;
  const auto stored = use_.userDefaults.object(key);
  const auto value = stored ? stored : use_.bundle.infoValue(key);
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
  if (isSameWord(value, "Escape")) return "Escape belongs to the other shortcut.";
  if (keyNamed(value)) return std::nullopt;
  std::vector<std::string> keys;
  for (const auto& key : keyNames()) keys.emplace_back(key.displayName);
  return unknownWord("key", value, keys);
}

bool NamedSettings::set(std::string_view name, std::string_view value) {
  store(name, value);
  use_.notificationCenter.post(settingWasSet);
  const auto wanted =
      isSwitch(name) ? onOrOff(switchFromWord(value).value_or(false)) : std::string{value};
  return value == defaultValue || isSameWord(this->value(name).value_or(""), wanted);
}

void NamedSettings::store(std::string_view name, std::string_view value) {
  const bool isDefault = value == defaultValue;
  if (const auto* row = booleanNamed(name)) {
    use_.settings.set(row->setting, !isDefault && switchFromWord(value).value_or(false));
  } else if (name == settingsKey::fnReplacementModifier) {
    use_.settings.setFnReplacementModifier(isDefault ? std::nullopt
                                                     : fnReplacementModifierFromRawValue(value));
  } else if (name == shortcutName) {
    const auto* key = keyNamed(value);
    if (isDefault || !key) return use_.settings.resetLocalToggleShortcut();
    use_.settings.setLocalToggleShortcut(
        use_.settings.makeLocalToggleShortcut(key->keyCode, std::nullopt));
  } else if (isDefault) {
    use_.userDefaults.removeObject(name);
  } else if (use_.setAutomaticChecks) {
    use_.setAutomaticChecks(switchFromWord(value).value_or(false));
  } else {
    use_.userDefaults.setObject(name, switchFromWord(value).value_or(false));
  }
}

bool NamedSettings::isManaged(std::string_view name) const {
  if (name != shortcutName) return use_.userDefaults.isManaged(name);
  return std::ranges::any_of(shortcutKeys,
                             [this](auto key) { return use_.userDefaults.isManaged(key); });
}

}  // namespace keyrow
