#include "sim/scenario/Token.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <utility>

namespace keyrow::sim {

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t'; }

/// Takes one line apart, character by character.
class Tokenizer {
 public:
  explicit Tokenizer(std::string_view line) : line_{line} {}

  std::expected<TokenizedLine, LineError> run() {
    if (const auto error = checkText()) return std::unexpected{*error};
    while (true) {
      while (position_ < line_.size() && isBlank(line_[position_])) ++position_;
      if (position_ == line_.size()) return std::move(result_);
      if (line_[position_] == '#') {
        result_.comment = std::string{line_.substr(position_ + 1)};
        return std::move(result_);
      }
      if (const auto error = takeToken()) return std::unexpected{*error};
      result_.endColumn = columnAt(position_);
    }
  }

 private:
  std::size_t columnAt(std::size_t byte) const {
    std::size_t column = 1;
    for (const char c : line_.substr(0, byte)) column += (c & 0xC0) != 0x80 ? 1 : 0;
    return column;
  }

  std::optional<LineError> checkText() const {
    for (std::size_t at = 0; at < line_.size();) {
      utf8proc_int32_t scalar = -1;
      const auto length =
          utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(line_.data() + at),
                           static_cast<utf8proc_ssize_t>(line_.size() - at), &scalar);
      const bool isControl = (scalar < 0x20 && scalar != '\t') || scalar == 0x7F;
      if (length <= 0 || isControl) {
        std::array<char, 80> text{};
        if (length <= 0) {
          std::snprintf(text.data(), text.size(), "expected UTF-8 text, found the byte 0x%02X",
                        static_cast<unsigned>(static_cast<unsigned char>(line_[at])));
        } else {
          std::snprintf(text.data(), text.size(),
                        "expected text, found the control character U+%04X",
                        static_cast<unsigned>(scalar));
        }
        return LineError{columnAt(at), text.data()};
      }
      at += static_cast<std::size_t>(length);
    }
    return std::nullopt;
  }

  std::optional<LineError> takeToken() {
    Token token{.text = {}, .column = columnAt(position_), .isQuoted = false, .valueStart = {}};
    while (position_ < line_.size() && !isBlank(line_[position_])) {
      const bool mayQuote = token.text.empty() || token.valueStart == token.text.size();
      if (line_[position_] == '"' && mayQuote && !token.isQuoted) {
        token.isQuoted = true;
        if (const auto error = takeQuoted(token.text)) return error;
        if (position_ < line_.size() && !isBlank(line_[position_])) {
          return LineError{columnAt(position_), "expected a blank after the quoted text"};
        }
        break;
      }
      token.text += line_[position_];
      if (line_[position_] == '=' && !token.valueStart) token.valueStart = token.text.size();
      ++position_;
    }
    result_.tokens.push_back(std::move(token));
    return std::nullopt;
  }

  /// Takes what stands behind a backslash.
  std::optional<LineError> takeEscape(std::string& text) {
    constexpr std::string_view expected =
        R"(expected \", \\, \n, \t or a character such as \u{1B})";
    const auto start = position_ - 1;
    constexpr std::string_view escapes = "\"\\nt";
    constexpr std::string_view meanings = "\"\\\n\t";
    const char c = position_ < line_.size() ? line_[position_++] : ' ';
    if (const auto which = escapes.find(c); which != std::string_view::npos) {
      text += meanings[which];
      return std::nullopt;
    }
    const auto end = line_.find('}', position_);
    const bool isNumber =
        c == 'u' && line_.substr(position_).starts_with('{') && end != std::string_view::npos;
    const auto* digits = line_.data() + position_ + 1;
    std::int32_t scalar = -1;
    if (!isNumber ||
        std::from_chars(digits, line_.data() + end, scalar, 16).ptr != line_.data() + end ||
        !utf8proc_codepoint_valid(scalar)) {
      return LineError{columnAt(start), std::string{expected}};
    }
    std::array<utf8proc_uint8_t, 4> bytes{};
    const auto length = utf8proc_encode_char(scalar, bytes.data());
    text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
    position_ = end + 1;
    return std::nullopt;
  }

  std::optional<LineError> takeQuoted(std::string& text) {
    const auto start = position_++;
    while (position_ < line_.size()) {
      const char c = line_[position_++];
      if (c == '"') return std::nullopt;
      if (c != '\\') {
        text += c;
        continue;
      }
      if (const auto error = takeEscape(text)) return error;
    }
    return LineError{columnAt(start),
                     "expected a closing quotation mark for the text that begins here"};
  }

  const std::string_view line_;
  std::size_t position_ = 0;
  TokenizedLine result_;
};

}  // namespace

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const auto start = std::min(text.find_first_not_of(blanks), text.size());
  return text.substr(start, text.find_last_not_of(blanks) + 1 - start);
}

std::expected<TokenizedLine, LineError> tokenize(std::string_view line) {
  return Tokenizer{line}.run();
}

}  // namespace keyrow::sim
