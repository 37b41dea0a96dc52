#include "sim/ports/SimulatedText.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>
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

/// The scalar's full case folding.
std::vector<utf8proc_int32_t> folded(utf8proc_int32_t scalar) {
  std::vector<utf8proc_int32_t> result(32);
  int lastBoundClass = 0;
  const auto count =
      utf8proc_decompose_char(scalar, result.data(), static_cast<utf8proc_ssize_t>(result.size()),
                              UTF8PROC_CASEFOLD, &lastBoundClass);
  result.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return result;
}

/// The text's full case folding, decomposed, with its marks in canonical order.
std::string foldedText(std::string_view text) {
  std::string valid;
  while (!text.empty()) append(valid, takeScalar(text));
  utf8proc_uint8_t* result = nullptr;
  const auto length = utf8proc_map(
      reinterpret_cast<const utf8proc_uint8_t*>(valid.data()),
      static_cast<utf8proc_ssize_t>(valid.size()), &result,
      static_cast<utf8proc_option_t>(UTF8PROC_CASEFOLD | UTF8PROC_DECOMPOSE | UTF8PROC_STABLE));
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner{result, &std::free};
  if (length < 0) throw std::runtime_error{utf8proc_errmsg(length)};
  return {reinterpret_cast<const char*>(result), static_cast<std::size_t>(length)};
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
    for (const auto lower : folded(scalar)) append(result, utf8proc_toupper(lower));
  }
  return result;
}

std::string SimulatedText::lowercased(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const auto scalar = takeScalar(text);
    if (scalar == U'İ') {
      // The one letter whose lower case is two scalars; its folding is the same.
      for (const auto lower : folded(scalar)) append(result, lower);
    } else {
      append(result, utf8proc_tolower(scalar));
    }
  }
  return result;
}

bool SimulatedText::localizedCaseInsensitiveContains(std::string_view text, std::string_view part) {
  const auto searched = foldedText(text);
  const auto wanted = foldedText(part);
  if (wanted.empty()) return false;
  auto starts = characterStarts(searched);
  starts.push_back(searched.size());
  const auto isBoundary = [&](std::size_t position) {
    return std::ranges::binary_search(starts, position);
  };
  for (auto found = searched.find(wanted); found != std::string::npos;
       found = searched.find(wanted, found + 1)) {
    if (isBoundary(found) && isBoundary(found + wanted.size())) return true;
  }
  return false;
}

}  // namespace keyrow::sim
