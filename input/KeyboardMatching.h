#pragma once

#include <array>

#include "platform/PropertyValue.h"

namespace keyrow {

/// Matches keyboards and keypads: `kHIDPage_GenericDesktop` with `kHIDUsage_GD_Keyboard` and
/// `kHIDUsage_GD_Keypad` (IOHIDUsageTables.h).
inline std::array<PropertyDictionary, 2> keyboardMatching() {
  return {PropertyDictionary{{"DeviceUsagePage", 1}, {"DeviceUsage", 6}},
          PropertyDictionary{{"DeviceUsagePage", 1}, {"DeviceUsage", 7}}};
}

}  // namespace keyrow
