#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Text.h"

namespace keyrow {

/// The per-app shortcut: the key that, with Fn, creates or flips the frontmost
/// application's override.
struct LocalToggleShortcut {
  /// A virtual key code (`kVK_…`, HIToolbox Events.h).
  std::uint16_t keyCode = 0;
  /// How the key is shown to the user.
  std::string displayName;
  /// The key equivalent for a menu item: empty for a key that has a name of its own, absent
  /// for one that has neither a name nor a printable character.
  std::optional<std::string> menuKeyEquivalent;

  friend bool operator==(const LocalToggleShortcut&, const LocalToggleShortcut&) = default;
};

/// `kVK_ANSI_Grave`, the key of the default shortcut.
inline constexpr std::uint16_t graveAccentKeyCode = 50;
/// `kVK_Escape`, which belongs to the global shortcut and is never the per-app one.
inline constexpr std::uint16_t escapeKeyCode = 53;
/// The key that holds until the user records another.
LocalToggleShortcut defaultLocalToggleShortcut();

/// Names a key: by the table of known keys, else by the character that it types when
/// `characters` is just one printable character, else by its code.
LocalToggleShortcut makeLocalToggleShortcut(std::uint16_t keyCode,
                                            std::optional<std::string_view> characters, Text& text);

}  // namespace keyrow
