#include "sim/SimulatedText.h"

#include <utf8proc.h>

#include <array>
#include <vector>

namespace keyrow::sim {

namespace {

constexpr utf8proc_int32_t replacementCharacter = 0xFFFD;

/// Takes the first scalar off the text, which must not be empty.
utf8proc_int32_t takeScalar(std::string_view& text) {
  utf8proc_int32_t scalar = -1;
  const auto* bytes = reinterpret_cast<const utf8proc_uint8_t*>(text.data());
  const auto length = utf8proc_iterate(bytes, static_cast<utf8proc_ssize_t>(text.size()), &scalar);
  text.remove_prefix(length > 0 ? static_cast<std::size_t>(length) : 1);
  return length > 0 ? scalar : replacementCharacter;
}

void append(std::string& text, utf8proc_int32_t scalar) {
  std::array<utf8proc_uint8_t, 4> bytes{};
  const auto length = utf8proc_encode_char(scalar, bytes.data());
  text.append(reinterpret_cast<const char*>(bytes.data()), static_cast<std::size_t>(length));
}

/// Where each extended grapheme cluster begins, in bytes.
std::vector<std::size_t> characterStarts(std::string_view text) {
  std::vector<std::size_t> starts;
  utf8proc_int32_t state = 0;
  utf8proc_int32_t previous = 0;
  for (auto rest = text; !rest.empty();) {
    const auto start = text.size() - rest.size();
    const auto scalar = takeScalar(rest);
    if (start == 0 || utf8proc_grapheme_break_stateful(previous, scalar, &state)) {
      starts.push_back(start);
    }
    previous = scalar;
  }
  return starts;
}

/// The scalar's full case folding, decomposed on request.
std::vector<utf8proc_int32_t> folded(utf8proc_int32_t scalar, int options) {
  std::vector<utf8proc_int32_t> result(32);
  int lastBoundClass = 0;
  const auto count = utf8proc_decompose_char(
      scalar, result.data(), static_cast<utf8proc_ssize_t>(result.size()),
      static_cast<utf8proc_option_t>(UTF8PROC_CASEFOLD | options), &lastBoundClass);
  result.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return result;
}

std::string foldedText(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    for (const auto scalar : folded(takeScalar(text), UTF8PROC_DECOMPOSE)) append(result, scalar);
  }
  return result;
}

}  // namespace

std::size_t SimulatedText::characterCount(std::string_view text) {
  return characterStarts(text).size();
}

std::string SimulatedText::lastCharacters(std::string_view text, std::size_t count) {
  if (count == 0) return {};
  const auto starts = characterStarts(text);
  if (starts.size() <= count) return std::string{text};
  return std::string{text.substr(starts[starts.size() - count])};
}

std::optional<char32_t> SimulatedText::firstScalar(std::string_view text) {
  if (text.empty()) return std::nullopt;
  return static_cast<char32_t>(takeScalar(text));
}

bool SimulatedText::isLetter(char32_t scalar) {
  const auto category = utf8proc_category(static_cast<utf8proc_int32_t>(scalar));
  return category >= UTF8PROC_CATEGORY_LU && category <= UTF8PROC_CATEGORY_ME;
}

bool SimulatedText::isControl(char32_t scalar) {
  const auto category = utf8proc_category(static_cast<utf8proc_int32_t>(scalar));
  return category == UTF8PROC_CATEGORY_CC || category == UTF8PROC_CATEGORY_CF;
}

std::string SimulatedText::uppercased(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const auto scalar = takeScalar(text);
    if (utf8proc_category(scalar) == UTF8PROC_CATEGORY_LU) {
      append(result, scalar);
      continue;
    }
    // utf8proc maps one scalar to one; by way of the folding, ß becomes SS.
    for (const auto lower : folded(scalar, 0)) append(result, utf8proc_toupper(lower));
  }
  return result;
}

std::string SimulatedText::lowercased(std::string_view text) {
  std::string result;
  while (!text.empty()) append(result, utf8proc_tolower(takeScalar(text)));
  return result;
}

bool SimulatedText::localizedCaseInsensitiveContains(std::string_view text, std::string_view part) {
  return foldedText(text).find(foldedText(part)) != std::string::npos;
}

}  // namespace keyrow::sim
