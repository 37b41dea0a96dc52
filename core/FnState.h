#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace keyrow {

/// The keyboard's function-key mode. The raw value is the number that the HID system
/// uses (`hidFKeyModeKey`) and the number stored in the user defaults.
enum class FnState : std::int64_t {
  /// The top row controls media and the system; F1-F12 need Fn.
  special = 0,
  /// The top row is F1-F12; media and system controls need Fn.
  standard = 1,
};

constexpr std::int64_t rawValue(FnState state) { return static_cast<std::int64_t>(state); }

/// The mode with this raw value; absent for every integer but 0 and 1.
constexpr std::optional<FnState> fnStateFromRawValue(std::int64_t raw) {
  if (raw != rawValue(FnState::special) && raw != rawValue(FnState::standard)) return std::nullopt;
  return FnState{raw};
}

/// The mode that the system preference "com.apple.keyboard.fnState" stands for.
constexpr FnState fnStateFromPreference(bool standardFunctionKeys) {
  return standardFunctionKeys ? FnState::standard : FnState::special;
}

constexpr FnState otherFnState(FnState state) {
  return state == FnState::special ? FnState::standard : FnState::special;
}

/// The mode as log lines name it.
constexpr std::string_view modeText(FnState state) {
  return state == FnState::standard ? "standard function keys" : "special function keys";
}

}  // namespace keyrow
