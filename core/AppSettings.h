#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/FnReplacementModifier.h"
#include "core/LocalToggleShortcut.h"
#include "platform/NotificationCenter.h"
#include "platform/Text.h"
#include "platform/UserDefaults.h"

namespace keyrow {

/// The keys of all settings in the user defaults.
namespace settingsKey {
inline constexpr std::string_view globalFnState = "globalFnState";
inline constexpr std::string_view localFnState = "localFnState";
inline constexpr std::string_view showCapsLockIndicator = "showCapsLockIndicator";
inline constexpr std::string_view applyFnModeToExternalFunctionKeys =
    "applyFnModeToExternalFunctionKeys";
inline constexpr std::string_view enhancedDiagnosticsEnabled = "enhancedDiagnosticsEnabled";
inline constexpr std::string_view fnReplacementModifier = "fnReplacementModifier";
inline constexpr std::string_view localToggleShortcutKeyCode = "localToggleShortcutKeyCode";
inline constexpr std::string_view localToggleShortcutDisplayName = "localToggleShortcutDisplayName";
inline constexpr std::string_view localToggleShortcutMenuKeyEquivalent =
    "localToggleShortcutMenuKeyEquivalent";
inline constexpr std::string_view hasPromptedAccessibility = "hasPromptedAccessibility";
inline constexpr std::string_view SUEnableAutomaticChecks = "SUEnableAutomaticChecks";

inline constexpr std::array<std::string_view, 11> all{globalFnState,
                                                      localFnState,
                                                      showCapsLockIndicator,
                                                      applyFnModeToExternalFunctionKeys,
                                                      enhancedDiagnosticsEnabled,
                                                      fnReplacementModifier,
                                                      localToggleShortcutKeyCode,
                                                      localToggleShortcutDisplayName,
                                                      localToggleShortcutMenuKeyEquivalent,
                                                      hasPromptedAccessibility,
                                                      SUEnableAutomaticChecks};
}  // namespace settingsKey

/// The notifications posted after a setting was written.
namespace settingsNotification {
inline constexpr std::string_view CapsLockIndicatorSettingDidChange =
    "CapsLockIndicatorSettingDidChange";
inline constexpr std::string_view ExternalFunctionKeysSettingDidChange =
    "ExternalFunctionKeysSettingDidChange";
inline constexpr std::string_view EnhancedDiagnosticsSettingDidChange =
    "EnhancedDiagnosticsSettingDidChange";
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

  /// Whether the status item shows the Caps Lock state; absent means false. The setter
  /// posts `CapsLockIndicatorSettingDidChange`.
  bool showCapsLockIndicator() const;
  void setShowCapsLockIndicator(bool show);

  /// Whether the top row of external keyboards follows the mode; absent means false. The
  /// setter posts `ExternalFunctionKeysSettingDidChange`.
  bool applyFnModeToExternalFunctionKeys() const;
  void setApplyFnModeToExternalFunctionKeys(bool apply);

  /// Whether the log tells more about keyboards and applications; absent means false.
  /// The setter posts `EnhancedDiagnosticsSettingDidChange`.
  bool enhancedDiagnosticsEnabled() const;
  void setEnhancedDiagnosticsEnabled(bool enabled);

  /// The modifier key that stands in for Fn; absent when there is none. Setting none
  /// removes the key.
  std::optional<FnReplacementModifier> fnReplacementModifier() const;
  void setFnReplacementModifier(std::optional<FnReplacementModifier> modifier);

  /// The per-app shortcut: the stored one, or the default when there is none or when it
  /// is Escape. Setting and resetting post `LocalToggleShortcutSettingDidChange`.
  LocalToggleShortcut localToggleShortcut() const;
  /// Its key code alone.
  std::uint16_t localToggleShortcutKeyCode() const;
  void setLocalToggleShortcut(const LocalToggleShortcut& shortcut);
  void resetLocalToggleShortcut();

  /// Whether the system was asked once to prompt for the Accessibility permission;
  /// absent means false.
  bool hasPromptedAccessibility() const;
  void setHasPromptedAccessibility();

  /// Names a key for use as the per-app shortcut; see `LocalToggleShortcut.h`.
  LocalToggleShortcut makeLocalToggleShortcut(std::uint16_t keyCode,
                                              std::optional<std::string_view> characters) const;

 private:
  bool boolean(std::string_view key) const;
  void setBoolean(std::string_view key, bool value, std::string_view notification);
  std::optional<std::string> string(std::string_view key) const;
  /// The stored key code; absent when there is none, or when it is Escape.
  std::optional<std::uint16_t> usableKeyCode() const;

  const Uses use_;
};

}  // namespace keyrow
