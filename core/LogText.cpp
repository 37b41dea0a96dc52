#include "core/LogText.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

namespace keyrow {

namespace {

struct Character {
  std::uint32_t code = 0;
  /// In bytes.
  std::size_t length = 1;
};

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

/// Unicode's control characters, its line separators, and what changes the direction of reading.
constexpr std::array<Range, 6> controls{{{0x00, 0x1F},
                                         {0x7F, 0x9F},
                                         {0x61C, 0x61C},
                                         {0x200E, 0x200F},
                                         {0x2028, 0x202E},
                                         {0x2066, 0x2069}}};

/// The first character, where it has up to three bytes of UTF-8; no control has more. What is
/// malformed is taken byte by byte, as what it is not.
Character firstCharacter(std::string_view text) {
  constexpr Character other{.code = U'?'};
  const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
  const auto isTail = [&](std::size_t index) {
    return index < text.size() && (byteAt(index) & 0xC0U) == 0x80;
  };
  const std::uint32_t lead = byteAt(0);
  if (lead < 0x80) return {.code = lead};
  if ((lead & 0xE0U) == 0xC0 && isTail(1)) {
    return {.code = (lead & 0x1FU) << 6U | (byteAt(1) & 0x3FU), .length = 2};
  }
  if ((lead & 0xF0U) == 0xE0 && isTail(1) && isTail(2)) {
    return {.code = (lead & 0x0FU) << 12U | (byteAt(1) & 0x3FU) << 6U | (byteAt(2) & 0x3FU),
            .length = 3};
  }
  return other;
}

std::string escaped(std::uint32_t code) {
  if (code == '\n') return "\\n";
  if (code == '\t') return "\\t";
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "\\u{%X}", code);
  return text.data();
}

}  // namespace

std::string inOneLine(std::string_view text) { return withControls(text, escaped); }

std::string withControls(std::string_view text, std::string (*written)(std::uint32_t code)) {
  std::string line;
  while (!text.empty()) {
    const auto [code, length] = firstCharacter(text);
    const bool isControl = std::ranges::any_of(
        controls, [code](const Range& range) { return range.first <= code && code <= range.last; });
    line += isControl ? written(code) : std::string{text.substr(0, length)};
    text.remove_prefix(length);
  }
  return line;
}

}  // namespace keyrow
