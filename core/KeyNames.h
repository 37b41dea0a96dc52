#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace keyrow {

/// A key whose name does not depend on the keyboard layout in use.
struct KeyName {
  /// A virtual key code (`kVK_…`, HIToolbox Events.h).
  std::uint16_t keyCode;
  std::string_view displayName;
  /// Empty when the key has no printable equivalent.
  std::string_view menuKeyEquivalent;
};

/// All known keys, for tests and the simulated Mac; Escape is not among them.
std::span<const KeyName> keyNames();

/// The known key with this code; null when there is none.
const KeyName* findKeyName(std::uint16_t keyCode);

}  // namespace keyrow
