#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/KeyEvent.h"

namespace keyrow::sim {

/// A key as scenarios name it.
struct NamedKey {
  std::uint16_t keyCode = 0;
  /// The flags that it adds while it is held; 0 for a key that is no modifier.
  std::uint64_t flags = 0;
};

/// The key beside the left shift key on ISO keyboards (`kVK_ISO_Section`), and what it types.
inline constexpr std::uint16_t sectionKeyCode = 10;
inline constexpr std::string_view sectionKeyName = "§";

/// The key with this name, in any case: one that Keyrow shows, such as "F5" or "left-arrow", or
/// "Escape", or "§", or a modifier such as "fn" or "right-option". Absent for all other names.
std::optional<NamedKey> keyNamed(std::string_view name);

/// Whether the events of this key carry the flag of Fn whether it is held or not.
bool carriesFn(std::uint16_t keyCode);

/// A key's name, or "key 200".
std::string keyName(std::uint16_t keyCode);

/// An event in words, such as "F5 down", "A up with command" or "A repeat". Fn is not told of
/// keys that always carry its flag.
std::string keyEventText(std::uint32_t type, const KeyEvent& event);

}  // namespace keyrow::sim
