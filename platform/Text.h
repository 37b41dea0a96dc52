#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Port.h"

namespace keyrow {

/// What the platform knows about Unicode. Texts are UTF-8. A "character" is what a
/// reader sees as one: an extended grapheme cluster. Safe to call from any thread.
class Text : public Port {
 public:
  /// How many characters the text has.
  virtual std::size_t characterCount(std::string_view text) = 0;

  /// The text's last `count` characters; the whole text when it has no more.
  virtual std::string lastCharacters(std::string_view text, std::size_t count) = 0;

  /// The text's first Unicode scalar; absent when the text is empty.
  virtual std::optional<char32_t> firstScalar(std::string_view text) = 0;

  /// Whether the scalar is a letter (general categories L* and M*, as
  /// `NSCharacterSet.letterCharacterSet` has it).
  virtual bool isLetter(char32_t scalar) = 0;

  /// Whether the scalar is a control character (general categories Cc and Cf, as
  /// `NSCharacterSet.controlCharacterSet` has it).
  virtual bool isControl(char32_t scalar) = 0;

  virtual std::string uppercased(std::string_view text) = 0;
  virtual std::string lowercased(std::string_view text) = 0;

  /// Whether `text` contains `part`, ignoring case by the rules of the user's locale
  /// (`localizedCaseInsensitiveContainsString:`).
  virtual bool localizedCaseInsensitiveContains(std::string_view text, std::string_view part) = 0;
};

}  // namespace keyrow
