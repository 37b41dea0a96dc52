#include "core/LocalToggleShortcut.h"

#include "core/KeyNames.h"

namespace keyrow {

namespace {

/// Whether the scalar is a line or paragraph separator. What else ends a line (U+000A-U+000D,
/// U+0085) is a control character anyway.
constexpr bool isSeparator(char32_t scalar) { return scalar == U'\u2028' || scalar == U'\u2029'; }

bool isOnePrintableCharacter(std::string_view characters, char32_t firstScalar, Text& text) {
  return text.characterCount(characters) == 1 && !isSeparator(firstScalar) &&
         !text.isControl(firstScalar);
}

}  // namespace

LocalToggleShortcut defaultLocalToggleShortcut() { return {graveAccentKeyCode, "`", "`"}; }

LocalToggleShortcut makeLocalToggleShortcut(std::uint16_t keyCode,
                                            std::optional<std::string_view> characters,
                                            Text& text) {
  if (const KeyName* known = findKeyName(keyCode)) {
    return {keyCode, std::string{known->displayName}, std::string{known->menuKeyEquivalent}};
  }
  if (characters) {
    const auto first = text.firstScalar(*characters);
    if (first && isOnePrintableCharacter(*characters, *first, text)) {
      return {keyCode,
              text.isLetter(*first) ? text.uppercased(*characters) : std::string{*characters},
              text.lowercased(*characters)};
    }
  }
  return {keyCode, "KeyCode " + std::to_string(keyCode), std::nullopt};
}

}  // namespace keyrow
