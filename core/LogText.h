#pragma once

#include <string>
#include <string_view>

namespace keyrow {

/// A text from outside as the log shows it: in one line, and read from left to right. Control
/// characters, line separators and bidirectional controls are written as \n, \t or \u{1B}.
std::string inOneLine(std::string_view text);

}  // namespace keyrow
