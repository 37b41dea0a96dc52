#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/FnState.h"
#include "platform/PropertyValue.h"
#include "sim/scenario/ScenarioError.h"
#include "sim/scenario/Token.h"

namespace keyrow::sim {

/// Reads a line's words from left to right. Whatever does not fit is thrown as a
/// `LineError`, which the parser catches.
class LineReader {
 public:
  explicit LineReader(const TokenizedLine& line) : line_{&line} {}

  bool atEnd() const { return next_ == line_->tokens.size(); }

  /// Takes the next word when it is this one.
  bool accept(std::string_view word);

  /// Whether the next word is this one.
  bool at(std::string_view word) const;

  /// Whether the next word is a number.
  bool atNumber() const;

  /// Whether "N times" follows.
  bool atTimes() const;

  /// Takes the next word, which must be this one.
  void require(std::string_view word);

  /// Takes the next word, which must be one of these; gives its index.
  std::size_t oneOf(std::span<const std::string_view> words);

  /// Takes the next word when it is one of these; absent when it is not.
  std::optional<std::string> maybeOneOf(std::span<const std::string_view> words);

  /// Takes "N times" with a number up to `largest`; absent when no number follows.
  std::optional<std::uint64_t> maybeTimes(std::uint64_t largest);

  /// Takes a "quoted text", and gives it with its quotation marks as the timeline prints it;
  /// absent when none follows.
  std::optional<std::string> maybeQuoted();

  /// Takes a bundle identifier: a word without quotation marks, "=" and braces.
  std::string bundleIdentifier();

  /// Takes APP=MODE.
  std::pair<std::string, FnState> override_();

  /// Takes the next word or text, whatever it is; `expected` says what belongs here.
  std::string word(std::string_view expected);
  /// The same, but "" is one, too.
  std::string wordOrNothing(std::string_view expected);

  /// Takes a "quoted text".
  std::string quotedText(std::string_view expected);

  /// Takes "special" or "standard".
  FnState mode();

  /// Takes a mode, or the word "none".
  std::optional<FnState> modeOrNone();

  /// Takes a number with a unit: ns, ms, s, min, h or d. Only a signed one may begin with
  /// "+" or "-".
  std::chrono::nanoseconds duration();
  std::chrono::nanoseconds signedDuration();

  /// Takes a whole number, decimal or hexadecimal with 0x, up to `largest`.
  std::uint64_t number(std::uint64_t largest);

  /// Takes a value: true, false, a number, a "quoted text", {}, or key=value ... for a
  /// dictionary.
  PropertyValue value();

  /// Takes a value, or the word "none".
  std::optional<PropertyValue> valueOrNone();

  struct Property {
    std::string key;
    std::optional<PropertyValue> value;
    /// False for a text without quotation marks, which has to be meant as one.
    bool isPlain = true;
  };
  /// Takes key=value, where the value may be none.
  Property property(std::string_view expected);

  /// Whether the next token may be read as key=value.
  bool atProperty() const;

  /// The line must end here.
  void end() const;

  /// Throws "expected ..., found ..." for the next token.
  [[noreturn]] void fail(std::string_view expected) const;

  /// Throws the same for the token before the next one.
  [[noreturn]] void failBefore(std::string_view expected);

 private:
  const Token* peek() const { return atEnd() ? nullptr : &line_->tokens[next_]; }

  const TokenizedLine* line_;
  std::size_t next_ = 0;
};

}  // namespace keyrow::sim
