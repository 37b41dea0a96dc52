#pragma once

#include <string_view>
#include <variant>

#include "core/BooleanSetting.h"

namespace keyrow {

/// What can be switched besides Keyrow's own settings.
enum class OtherSwitch {
  /// Keyrow is a login item.
  loginItem,
  /// Sparkle checks for updates by itself.
  automaticUpdates,
};

/// What a check box switches; no two of them switch the same.
using Switch = std::variant<BooleanSetting, OtherSwitch>;

struct Checkbox {
  Switch what;
  /// What scenarios call it, and what it is to those who automate a Mac
  /// (`accessibilityIdentifier`).
  std::string_view name;
  std::string_view title;
};

}  // namespace keyrow
