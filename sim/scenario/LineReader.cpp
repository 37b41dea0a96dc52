#include "sim/scenario/LineReader.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "sim/machine/ModeWords.h"
#include "sim/machine/PropertyText.h"

namespace keyrow::sim {

namespace {

struct Unit {
  std::string_view name;
  double nanoseconds;
};

constexpr std::array<Unit, 6> units{
    {{"ns", 1}, {"ms", 1e6}, {"s", 1e9}, {"min", 60e9}, {"h", 3600e9}, {"d", 24 * 3600e9}}};

template <typename Number>
std::optional<Number> parseWhole(std::string_view text, int base = 10) {
  Number number{};
  const auto* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, base);
  return error == std::errc{} && stop == end ? std::optional{number} : std::nullopt;
}

std::optional<double> parseFraction(std::string_view text) {
  // Only what is plainly a decimal number: strtod reads far more, such as "inf".
  if (text.find_first_not_of("-+.e0123456789") != std::string_view::npos) return std::nullopt;
  const std::string terminated{text};
  char* stop = nullptr;
  const double number = std::strtod(terminated.c_str(), &stop);
  if (terminated.empty() || *stop != '\0' || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<std::chrono::nanoseconds> parseDuration(std::string_view text) {
  const auto digits = std::min(text.find_first_not_of("0123456789."), text.size());
  const auto unit = std::ranges::find(units, text.substr(digits), &Unit::name);
  const auto number = parseFraction(text.substr(0, digits));
  constexpr double longest = 1000.0 * 3600e9;
  if (unit == units.end() || !number || *number * unit->nanoseconds > longest) return std::nullopt;
  return std::chrono::nanoseconds{std::llround(*number * unit->nanoseconds)};
}

std::optional<PropertyValue> parsePlainValue(std::string_view text) {
  if (text == "true" || text == "false") return text == "true";
  if (text == "{}") return PropertyDictionary{};
  if (const auto whole = parseWhole<std::int64_t>(text)) return *whole;
  if (text.starts_with("0x")) {
    if (const auto whole = parseWhole<std::int64_t>(text.substr(2), 16)) return *whole;
  }
  if (const auto fraction = parseFraction(text)) return *fraction;
  return std::nullopt;
}

/// The word as messages show it: not all of one that goes on and on.
std::string shortened(std::string_view word) {
  constexpr std::size_t longest = 60;
  if (word.size() <= longest) return quoted(word);
  auto end = longest;
  while (end > 0 && (word[end] & 0xC0) == 0x80) --end;
  return quoted(std::string{word.substr(0, end)} + "…");
}

}  // namespace

bool LineReader::accept(std::string_view word) {
  if (!at(word)) return false;
  ++next_;
  return true;
}

bool LineReader::at(std::string_view word) const {
  const auto* token = peek();
  return token && !token->isQuoted && token->text == word;
}

bool LineReader::atNumber() const {
  const auto* token = peek();
  return token && !token->isQuoted && parseWhole<std::uint64_t>(token->text);
}

bool LineReader::atTimes() const {
  return atNumber() && next_ + 1 < line_->tokens.size() && line_->tokens[next_ + 1].text == "times";
}

std::optional<std::string> LineReader::maybeOneOf(std::span<const std::string_view> words) {
  const auto found = std::ranges::find_if(words, [this](auto word) { return accept(word); });
  return found == words.end() ? std::nullopt : std::optional{std::string{*found}};
}

std::optional<std::uint64_t> LineReader::maybeTimes(std::uint64_t largest) {
  if (!atNumber()) return std::nullopt;
  const auto times = number(largest);
  require("times");
  return times;
}

std::optional<std::string> LineReader::maybeQuoted() {
  const auto* token = peek();
  if (!token || !token->isQuoted || token->valueStart) return std::nullopt;
  ++next_;
  return quoted(token->text);
}

std::string LineReader::bundleIdentifier() {
  constexpr std::string_view expected = "a bundle identifier, such as com.apple.TextEdit";
  const auto* token = peek();
  // "none" and "unnamed" stand for something else in front, and "then" between events.
  if (at("none") || at("unnamed") || at("then") || !token || token->isQuoted ||
      token->text.find_first_of("={}") != std::string::npos) {
    fail(expected);
  }
  ++next_;
  return token->text;
}

std::pair<std::string, FnState> LineReader::override_() {
  constexpr std::string_view expected =
      "APP=MODE, such as com.apple.TextEdit=special or com.apple.TextEdit=standard";
  auto entry = property(expected);
  const auto* word = entry.value ? entry.value->string() : nullptr;
  const auto mode = word ? modeOfWord(*word) : std::nullopt;
  if (!mode) failBefore(expected);
  return {std::move(entry.key), *mode};
}

void LineReader::require(std::string_view word) {
  if (!accept(word)) fail(quoted(word));
}

std::size_t LineReader::oneOf(std::span<const std::string_view> words) {
  std::string expected;
  for (std::size_t index = 0; index < words.size(); ++index) {
    if (accept(words[index])) return index;
    if (index > 0) expected += index + 1 == words.size() ? " or " : ", ";
    expected += words[index];
  }
  fail(expected);
}

std::string LineReader::word(std::string_view expected) {
  const auto* token = peek();
  if (!token || token->text.empty()) fail(expected);
  return wordOrNothing(expected);
}

std::string LineReader::wordOrNothing(std::string_view expected) {
  const auto* token = peek();
  if (!token) fail(expected);
  ++next_;
  return token->text;
}

std::string LineReader::quotedText(std::string_view expected) {
  const auto* token = peek();
  if (!token || !token->isQuoted || token->valueStart) fail(expected);
  ++next_;
  return token->text;
}

FnState LineReader::mode() {
  constexpr std::array<std::string_view, 2> modes{"special", "standard"};
  return oneOf(modes) == 0 ? FnState::special : FnState::standard;
}

std::optional<FnState> LineReader::modeOrNone() {
  constexpr std::array<std::string_view, 3> modes{"special", "standard", "none"};
  return fnStateFromRawValue(static_cast<std::int64_t>(oneOf(modes)));
}

std::chrono::nanoseconds LineReader::duration() {
  const auto* token = peek();
  const auto duration = token ? parseDuration(token->text) : std::nullopt;
  if (!duration) fail("a duration of at most 1000h, such as 350ms, 0.35s, 5min, 1h or 2d");
  ++next_;
  return *duration;
}

std::chrono::nanoseconds LineReader::signedDuration() {
  const auto* token = peek();
  const bool isSigned = token && (token->text.starts_with('+') || token->text.starts_with('-'));
  const auto duration =
      isSigned ? parseDuration(std::string_view{token->text}.substr(1)) : std::nullopt;
  if (!duration) fail("a signed duration, such as +10ms or -0.2s");
  ++next_;
  return token->text.starts_with('-') ? -*duration : *duration;
}

std::uint64_t LineReader::number(std::uint64_t largest) {
  const auto* token = peek();
  std::optional<std::uint64_t> number;
  if (token) {
    const std::string_view text{token->text};
    number = text.starts_with("0x") ? parseWhole<std::uint64_t>(text.substr(2), 16)
                                    : parseWhole<std::uint64_t>(text);
  }
  if (!number || *number > largest) fail("a whole number up to " + std::to_string(largest));
  ++next_;
  return *number;
}

PropertyValue LineReader::value() {
  constexpr std::string_view expected =
      "a value: true, false, a number, a \"quoted text\", {}, or KEY=VALUE ... without braces";
  const auto* token = peek();
  if (atProperty() && token->text.front() != '{') {
    PropertyDictionary dictionary;
    while (atProperty()) {
      const auto& word = line_->tokens[next_];
      const std::string_view all{word.text};
      const auto text = all.substr(*word.valueStart);
      const auto key = all.substr(0, *word.valueStart - 1);
      if (key.find_first_of("{}") != std::string_view::npos) fail(expected);
      if (dictionary.contains(key)) fail("another key, as this one is there already");
      if (!word.isQuoted && !parsePlainValue(text))
        fail("KEY= with a value: true, false, a number, a \"quoted text\" or {}");
      auto entry = property("KEY=VALUE");
      dictionary.insert_or_assign(std::move(entry.key), *std::move(entry.value));
    }
    return dictionary;
  }
  if (token && token->isQuoted) {
    ++next_;
    return token->text;
  }
  auto value = token ? parsePlainValue(token->text) : std::nullopt;
  if (!value) fail(expected);
  ++next_;
  return *std::move(value);
}

std::optional<PropertyValue> LineReader::valueOrNone() {
  if (accept("none")) return std::nullopt;
  return value();
}

LineReader::Property LineReader::property(std::string_view expected) {
  if (!atProperty()) fail(expected);
  const auto& token = line_->tokens[next_];
  const std::string_view text{token.text};
  const auto value = text.substr(*token.valueStart);
  Property property{std::string{text.substr(0, *token.valueStart - 1)}, std::nullopt, true};
  if (token.isQuoted) {
    property.value = value;
  } else if (value != "none") {
    const auto plain = parsePlainValue(value);
    property.isPlain = plain.has_value();
    property.value = plain.value_or(value);
  }
  if (value.empty() && !token.isQuoted) fail(expected);
  ++next_;
  return property;
}

bool LineReader::atProperty() const {
  const auto* token = peek();
  return token && token->valueStart && *token->valueStart > 1;
}

void LineReader::end() const {
  if (!atEnd()) fail("the end of the line");
}

void LineReader::fail(std::string_view expected) const {
  const auto* token = peek();
  throw LineError{token ? token->column : line_->endColumn,
                  "expected " + std::string{expected} + ", found " +
                      (token ? shortened(token->text) : "the end of the line")};
}

void LineReader::failBefore(std::string_view expected) {
  --next_;
  fail(expected);
}

}  // namespace keyrow::sim
