#pragma once

#include <string_view>

namespace keyrow::sim {

/// The sizes of the system font that controls use, in points.
enum class FontSize { small = 11, system = 13 };

/// The system font, as the controls of the simulated Mac measure it.
class SystemFont {
 public:
  /// Texts are so much wider than was measured. That is known within 2 percent; at the upper end
  /// nothing has more room than on a real Mac.
  double stretch = 1.02;

  /// How wide a text is, in points.
  double textWidth(std::string_view text, FontSize size) const;

  /// How many lines a text takes that is wrapped between its words.
  int lineCount(std::string_view text, FontSize size, double width) const;

  /// The height of a line, in points.
  static constexpr double lineHeight(FontSize size) { return size == FontSize::small ? 14 : 16; }
};

}  // namespace keyrow::sim
