#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "core/BooleanSetting.h"
#include "core/FnReplacementModifier.h"
#include "core/LocalToggleShortcut.h"
#include "platform/NotificationCenter.h"
#include "platform/Text.h"
#include "platform/UserDefaults.h"

namespace keyrow {

/// The keys of the settings in the user defaults, besides those of `booleanSettingTable`.
namespace settingsKey {
inline constexpr std::string_view globalFnState = "globalFnState";
inline constexpr std::string_view localFnState = "localFnState";
inline constexpr std::string_view keyboardFnStates = "keyboardFnStates";
inline constexpr std::string_view lastSeenFnStatePreference = "lastSeenFnStatePreference";
inline constexpr std::string_view fnReplacementModifier = "fnReplacementModifier";
inline constexpr std::string_view localToggleShortcutKeyCode = "localToggleShortcutKeyCode";
inline constexpr std::string_view localToggleShortcutDisplayName = "localToggleShortcutDisplayName";
inline constexpr std::string_view localToggleShortcutMenuKeyEquivalent =
    "localToggleShortcutMenuKeyEquivalent";
inline constexpr std::string_view hasPromptedAccessibility = "hasPromptedAccessibility";
inline constexpr std::string_view SUEnableAutomaticChecks = "SUEnableAutomaticChecks";

/// The three under which the per-app shortcut is stored.
inline constexpr std::array localToggleShortcut{localToggleShortcutKeyCode,
                                                localToggleShortcutDisplayName,
                                                localToggleShortcutMenuKeyEquivalent};

inline constexpr std::array others{globalFnState,
                                   localFnState,
                                   keyboardFnStates,
                                   lastSeenFnStatePreference,
                                   fnReplacementModifier,
                                   localToggleShortcutKeyCode,
                                   localToggleShortcutDisplayName,
                                   localToggleShortcutMenuKeyEquivalent,
                                   hasPromptedAccessibility,
                                   SUEnableAutomaticChecks};

/// Those, and the Boolean ones.
inline constexpr auto all = [] {
  std::array<std::string_view, others.size() + booleanSettingTable.size()> keys{};
  const auto end = std::ranges::copy(others, keys.begin()).out;
  std::ranges::transform(booleanSettingTable, end, &BooleanSettingRow::key);
  return keys;
}();
}  // namespace settingsKey

/// The notifications posted after a setting was written, besides those of
/// `booleanSettingTable`.
namespace settingsNotification {
inline constexpr std::string_view LocalToggleShortcutSettingDidChange =
    "LocalToggleShortcutSettingDidChange";
}  // namespace settingsNotification

/// The application's settings. Every getter reads the user defaults afresh, and may be
/// called from any thread; a value of the wrong type reads as absent. Setters belong to
/// the main thread.
class AppSettings {
 public:
  struct Uses {
    UserDefaults& userDefaults;
    NotificationCenter& notificationCenter;
    Text& text;
  };

  explicit AppSettings(const Uses& uses) : use_{uses} {}

  /// Whether a Boolean that is true is stored, a number other than 0, or one of the texts "1",
  /// "YES" and "true" in any case.
  bool isOn(BooleanSetting setting) const { return boolean(rowOf(setting).key); }

  /// Stores it, and then posts its notification.
  void set(BooleanSetting setting, bool isOn);
  /// Removes it, and then posts the same. False when it is still stored.
  bool reset(BooleanSetting setting);

  /// Calls back after each time it was set, until the token is destroyed.
  ObserverToken observe(BooleanSetting setting, std::function<void()> handler) const;

  /// The modifier key that stands in for Fn; absent when there is none. Setting none
  /// removes the key.
  std::optional<FnReplacementModifier> fnReplacementModifier() const;
  void setFnReplacementModifier(std::optional<FnReplacementModifier> modifier);

  /// The per-app shortcut: the stored one, or the default when there is none or when it
  /// is Escape. Setting and resetting post `LocalToggleShortcutSettingDidChange`.
  LocalToggleShortcut localToggleShortcut() const;
  /// Its key code alone.
  std::uint16_t localToggleShortcutKeyCode() const;
  /// Stores it, or removes it, whole or not at all: false when that failed.
  bool setLocalToggleShortcut(const LocalToggleShortcut& shortcut);
  bool resetLocalToggleShortcut();

  /// Whether the system was asked once to prompt for the Accessibility permission;
  /// absent means false.
  bool hasPromptedAccessibility() const;
  void setHasPromptedAccessibility();

  /// Names a key for use as the per-app shortcut; see `LocalToggleShortcut.h`.
  LocalToggleShortcut makeLocalToggleShortcut(std::uint16_t keyCode,
                                              std::optional<std::string_view> characters) const;

 private:
  /// In the order of their keys; what is absent is removed.
  using ShortcutValues =
      std::array<std::optional<PropertyValue>, settingsKey::localToggleShortcut.size()>;
  bool storeLocalToggleShortcut(const ShortcutValues& values);

  bool boolean(std::string_view key) const;
  std::optional<std::string> string(std::string_view key) const;
  /// The stored key code; absent when there is none, or when it is Escape.
  std::optional<std::uint16_t> usableKeyCode() const;

  const Uses use_;
};

}  // namespace keyrow
