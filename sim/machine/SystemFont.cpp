#include "sim/machine/SystemFont.h"

#include <cstddef>

#include "sim/machine/InterWidths.h"

namespace keyrow::sim {

namespace {

/// How much wider than Inter San Francisco is.
constexpr double besideInter(FontSize size) { return size == FontSize::small ? 1.009 : 0.990; }

/// In units of Inter's em. What the table lacks is as wide as it is high, as a Chinese
/// character is.
double interWidth(char c) {
  const bool isContinuation = (c & 0xC0) == 0x80;
  if (isContinuation) return 0;
  if (c < ' ' || c > '~') return interUnitsPerEm;
  return interWidths[static_cast<std::size_t>(c - ' ')];
}

}  // namespace

double SystemFont::textWidth(std::string_view text, FontSize size) const {
  double units = 0;
  for (const char c : text) units += interWidth(c);
  return units / interUnitsPerEm * static_cast<int>(size) * besideInter(size) * stretch;
}

int SystemFont::lineCount(std::string_view text, FontSize size, double width) const {
  int count = 1;
  for (auto end = text.find(' '); end != text.npos && textWidth(text, size) > width; ++count) {
    // The longest beginning that fits, or else the first word.
    for (auto next = end; next != text.npos && textWidth(text.substr(0, next), size) <= width;
         next = text.find(' ', next + 1)) {
      end = next;
    }
    text.remove_prefix(end + 1);
    end = text.find(' ');
  }
  return count;
}

}  // namespace keyrow::sim
