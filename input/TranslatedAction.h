#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

namespace keyrow {

/// Presses a media key, of a type of the system's event headers (`NX_KEYTYPE_…`).
struct AuxiliaryAction {
  std::int32_t keyType;

  friend bool operator==(const AuxiliaryAction&, const AuxiliaryAction&) = default;
};

/// Opens the application at a path.
struct OpenApplicationAction {
  std::string_view path;
  std::string_view label;

  friend bool operator==(const OpenApplicationAction&, const OpenApplicationAction&) = default;
};

/// Opens a URL, or else the application at the path, where there is one.
struct OpenURLAction {
  std::string_view url;
  std::optional<std::string_view> fallbackApp;
  std::string_view label;

  friend bool operator==(const OpenURLAction&, const OpenURLAction&) = default;
};

/// Types a key with modifiers (`keyEventFlag`).
struct KeyStrokeAction {
  std::uint16_t keyCode;
  std::uint64_t flags;
  std::string_view label;

  friend bool operator==(const KeyStrokeAction&, const KeyStrokeAction&) = default;
};

/// What a top-row key does instead. Its texts live as long as the program.
using TranslatedAction =
    std::variant<AuxiliaryAction, OpenApplicationAction, OpenURLAction, KeyStrokeAction>;

}  // namespace keyrow
