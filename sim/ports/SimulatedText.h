#pragma once

#include "platform/Text.h"

namespace keyrow::sim {

/// Unicode by utf8proc, in the locale en_US. A byte that is not UTF-8 counts as U+FFFD.
class SimulatedText final : public Text {
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

}  // namespace keyrow::sim
