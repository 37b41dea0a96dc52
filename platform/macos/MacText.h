#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Text.h"

namespace keyrow::macos {

/// `Text` on `NSString` and `NSCharacterSet`. A character is a composed character sequence.
class MacText final : public Text {
 public:
  std::size_t characterCount(std::string_view text) override;
  std::string lastCharacters(std::string_view text, std::size_t count) override;
  std::optional<char32_t> firstScalar(std::string_view text) override;
  bool isLetter(char32_t scalar) override;
  bool isControl(char32_t scalar) override;
  std::string uppercased(std::string_view text) override;
  std::string lowercased(std::string_view text) override;
  bool localizedCaseInsensitiveContains(std::string_view text, std::string_view part) override;
};

}  // namespace keyrow::macos
