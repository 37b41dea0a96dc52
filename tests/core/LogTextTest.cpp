#include "core/LogText.h"

#include <gtest/gtest.h>

namespace keyrow {
namespace {

TEST(LogTextTest, LeavesWhatCanBeRead) {
  for (const auto* text : {"", "Logitech G Pro", "com.apple.TextEdit", "Tastatur für Ärzte", "键盘",
                           "⌨️ 😀", "a\\nb", "\xE2\x80\x90", "\xC3"}) {
    EXPECT_EQ(inOneLine(text), text);
  }
}

TEST(LogTextTest, WritesOutWhatWouldForgeALineOrTurnOne) {
  EXPECT_EQ(inOneLine("a\nb\tc"), "a\\nb\\tc");
  EXPECT_EQ(inOneLine("\x1B[31m\r\x7F"), "\\u{1B}[31m\\u{D}\\u{7F}");
  EXPECT_EQ(inOneLine(std::string_view{"\0", 1}), "\\u{0}");
  EXPECT_EQ(inOneLine("\u0085|\u009F|\u2028|\u2029"), "\\u{85}|\\u{9F}|\\u{2028}|\\u{2029}");
  EXPECT_EQ(inOneLine("\u202A\u202E\u2066\u2069\u200E\u200F\u061C"),
            "\\u{202A}\\u{202E}\\u{2066}\\u{2069}\\u{200E}\\u{200F}\\u{61C}");
}

}  // namespace
}  // namespace keyrow
