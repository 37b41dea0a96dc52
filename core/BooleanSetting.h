#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace keyrow {

/// A setting that is on or off; one that is not stored is off.
enum class BooleanSetting {
  /// The status item shows the Caps Lock state.
  showCapsLockIndicator,
  /// The top row of external keyboards follows the mode.
  applyFnModeToExternalFunctionKeys,
  /// The log tells more about keyboards and applications.
  enhancedDiagnosticsEnabled,
};

/// How a Boolean setting is stored.
struct BooleanSettingRow {
  BooleanSetting setting;
  /// In the user defaults.
  std::string_view key;
  /// Posted after a write.
  std::string_view notification;
};

/// All of them, in the order of the cases.
inline constexpr std::array booleanSettingTable{
    BooleanSettingRow{BooleanSetting::showCapsLockIndicator, "showCapsLockIndicator",
                      "CapsLockIndicatorSettingDidChange"},
    BooleanSettingRow{BooleanSetting::applyFnModeToExternalFunctionKeys,
                      "applyFnModeToExternalFunctionKeys", "ExternalFunctionKeysSettingDidChange"},
    BooleanSettingRow{BooleanSetting::enhancedDiagnosticsEnabled, "enhancedDiagnosticsEnabled",
                      "EnhancedDiagnosticsSettingDidChange"},
};

constexpr const BooleanSettingRow& rowOf(BooleanSetting setting) {
  return booleanSettingTable.at(static_cast<std::size_t>(setting));
}

}  // namespace keyrow
