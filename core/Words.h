#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FnState.h"

namespace keyrow {

// The words in which people write modes and settings, and are told what was wrong with them.

/// "special" or "standard".
std::string_view wordOf(FnState state);
/// The mode with this word; absent for every other word.
std::optional<FnState> fnStateFromWord(std::string_view word);

/// What is written for on and off: on, true, yes and 1, and their opposites, in any case. Absent
/// for every other word.
std::optional<bool> switchFromWord(std::string_view word);

/// Whether two words are the same but for the case of ASCII letters.
bool isSameWord(std::string_view one, std::string_view other);

/// The text between quotation marks, without control characters.
std::string inQuotes(std::string_view text);

/// That there is no such `what` ("setting", "command" …), and which of the known ones was probably
/// meant; where none is near, all of them if they are few.
std::string unknownWord(std::string_view what, std::string_view word,
                        const std::vector<std::string>& known);

}  // namespace keyrow
