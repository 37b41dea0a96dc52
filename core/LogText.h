#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace keyrow {

/// A text from outside as the log shows it: in one line, and read from left to right. Control
/// characters, line separators and bidirectional controls are written as \n, \t or \u{1B}.
std::string inOneLine(std::string_view text);

/// The text with each of those characters, a Unicode code point below U+10000, written in another
/// way.
std::string withControls(std::string_view text, std::string (*written)(std::uint32_t code));

}  // namespace keyrow
