#include "core/Words.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/LogText.h"

namespace keyrow {

namespace {

char lowered(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

/// How many letters have to be put in, left out or exchanged to make one word of the other.
std::size_t distance(std::string_view one, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  for (std::size_t i = 0; i < row.size(); ++i) row[i] = i;
  for (std::size_t i = 0; i < one.size(); ++i) {
    auto diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 0; j < other.size(); ++j) {
      const bool isSame = lowered(one[i]) == lowered(other[j]);
      const auto exchanged = diagonal + (isSame ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({exchanged, row[j] + 1, row[j + 1] + 1});
    }
  }
  return row.back();
}

}  // namespace

std::string_view wordOf(FnState state) {
  return state == FnState::special ? "special" : "standard";
}

std::optional<FnState> fnStateFromWord(std::string_view word) {
  for (const auto state : {FnState::special, FnState::standard}) {
    if (word == wordOf(state)) return state;
  }
  return std::nullopt;
}

std::optional<bool> switchFromWord(std::string_view word) {
  constexpr std::array<std::string_view, 4> on{"on", "true", "yes", "1"};
  constexpr std::array<std::string_view, 4> off{"off", "false", "no", "0"};
  const auto isWord = [word](std::string_view one) { return isSameWord(one, word); };
  if (std::ranges::any_of(on, isWord)) return true;
  if (std::ranges::any_of(off, isWord)) return false;
  return std::nullopt;
}

bool isSameWord(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, {}, lowered, lowered);
}

std::string inQuotes(std::string_view text) { return "\"" + inOneLine(text) + "\""; }

std::string unknownWord(std::string_view what, std::string_view word,
                        const std::vector<std::string>& known) {
  auto message = "There is no " + std::string{what} + " " + inQuotes(word) + ".";
  // Whoever writes a whole page means none of these.
  constexpr std::size_t longest = 100;
  if (known.empty() || word.size() > longest) return message;
  const auto nearest = std::ranges::min_element(
      known, {}, [word](const std::string& one) { return distance(word, one); });
  const auto difference = distance(word, *nearest);
  if (difference < nearest->size() && difference <= std::max<std::size_t>(2, nearest->size() / 3)) {
    return message + " Did you mean " + inOneLine(*nearest) + "?";
  }
  constexpr std::size_t most = 12;
  if (known.size() > most) return message;
  message += " There is: ";
  for (const auto& one : known) message += (&one == &known.front() ? "" : ", ") + inOneLine(one);
  return message + ".";
}

}  // namespace keyrow
