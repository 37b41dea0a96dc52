#include "sim/scenario/Token.h"

#include <utf8proc.h>

#include <array>
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
      while (position < line_.size() && isBlank(line_[position])) ++position;
      if (position == line_.size()) return std::move(result);
      if (line_[position] == '#') {
        result.comment = std::string{line_.substr(position + 1)};
        return std::move(result);
      }
      if (const auto error = takeToken()) return std::unexpected{*error};
      result.endColumn = columnAt(position);
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
      const bool isControl = scalar < 0x20 && scalar != '\t';
      if (length <= 0 || isControl || scalar == 0x7F) {
        std::array<char, 64> text{};
        std::snprintf(text.data(), text.size(), "expected UTF-8 text, found the byte 0x%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(line_[at])));
        return LineError{columnAt(at), text.data()};
      }
      at += static_cast<std::size_t>(length);
    }
    return std::nullopt;
  }

  std::optional<LineError> takeToken() {
    Token token{.text = {}, .column = columnAt(position), .isQuoted = false, .valueStart = {}};
    while (position < line_.size() && !isBlank(line_[position])) {
      const bool mayQuote = token.text.empty() || token.valueStart == token.text.size();
      if (line_[position] == '"' && mayQuote && !token.isQuoted) {
        token.isQuoted = true;
        if (const auto error = takeQuoted(token.text)) return error;
        if (position < line_.size() && !isBlank(line_[position])) {
          return LineError{columnAt(position), "expected a blank after the quoted text"};
        }
        break;
      }
      token.text += line_[position];
      if (line_[position] == '=' && !token.valueStart) token.valueStart = token.text.size();
      ++position;
    }
    result.tokens.push_back(std::move(token));
    return std::nullopt;
  }

  std::optional<LineError> takeQuoted(std::string& text) {
    const auto start = position++;
    while (position < line_.size()) {
      const char c = line_[position++];
      if (c == '"') return std::nullopt;
      if (c != '\\') {
        text += c;
        continue;
      }
      constexpr std::string_view escapes = "\"\\nt";
      constexpr std::string_view meanings = "\"\\\n\t";
      const auto which =
          position < line_.size() ? escapes.find(line_[position]) : std::string_view::npos;
      if (which == std::string_view::npos) {
        return LineError{columnAt(position - 1), R"(expected \", \\, \n or \t)"};
      }
      text += meanings[which];
      ++position;
    }
    return LineError{columnAt(start),
                     "expected a closing quotation mark for the text that begins here"};
  }

  const std::string_view line_;
  std::size_t position = 0;
  TokenizedLine result;
};

}  // namespace

std::expected<TokenizedLine, LineError> tokenize(std::string_view line) {
  return Tokenizer{line}.run();
}

}  // namespace keyrow::sim
