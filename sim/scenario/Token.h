#pragma once

#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/scenario/ScenarioError.h"

namespace keyrow::sim {

/// One word of a line, or one "quoted text", or one key=value.
struct Token {
  /// Without quotation marks, and with the escapes resolved.
  std::string text;
  /// Where it begins, in characters, from 1.
  std::size_t column = 1;
  /// Whether the text, or the value after the first "=", was quoted.
  bool isQuoted = false;
  /// Where the value begins in `text` when this may be read as key=value.
  std::optional<std::size_t> valueStart;
};

/// A line taken apart.
struct TokenizedLine {
  std::vector<Token> tokens;
  /// Where something that is missing at the end would have to stand.
  std::size_t endColumn = 1;
  /// What follows the "#"; absent when there is no comment.
  std::optional<std::string> comment;
};

/// The text without the blanks, and the carriage returns, around it.
std::string_view trimmed(std::string_view text);

/// Takes a line apart. In quoted text, \" \\ \n and \t stand for a quotation mark, a
/// backslash, a line feed and a tab, and \u{1B} for the character of this number. Fails for a text
/// without an end, for an unknown escape, and for what is no UTF-8 text.
std::expected<TokenizedLine, LineError> tokenize(std::string_view line);

}  // namespace keyrow::sim
