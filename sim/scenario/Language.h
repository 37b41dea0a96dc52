#pragma once

#include <array>
#include <span>
#include <string_view>
#include <variant>

#include "sim/scenario/Action.h"
#include "sim/scenario/EventPattern.h"
#include "sim/scenario/LineReader.h"

namespace keyrow::sim {

/// What follows "expect": something that is to have happened, or something that holds now.
using Expectation = std::variant<EventPattern, Check>;

/// One line of the scenario language.
template <typename Parsed>
struct Word {
  /// What it begins with, one or two words; of an expectation, behind "expect".
  std::string_view words;
  /// The whole line, with what varies in capitals and what may be left out in brackets.
  std::string_view usage;
  std::string_view summary;
  std::string_view example;
  /// Reads the rest of the line.
  Parsed (*parse)(LineReader& line);
};
using ActionWord = Word<Action>;
using ExpectationWord = Word<Expectation>;

/// The lines about one subject.
struct LanguagePart {
  std::span<const ActionWord> actions;
  std::span<const ExpectationWord> expectations;
};

/// Applications.
LanguagePart appLines();
/// Modes and settings: what the hardware holds, and what is stored.
LanguagePart modeLines();
/// Keyboards, their keys, and the event tap.
LanguagePart keyLines();
/// The item in the menu bar, its menu, the settings window, alerts.
LanguagePart screenLines();
/// Time, sleep, and what Keyrow is allowed to do.
LanguagePart machineLines();
/// Keyrow's processes.
LanguagePart processLines();
/// The log.
LanguagePart logLines();
/// Calls of the system, and how they fail.
LanguagePart faultLines();
/// What the settings window works with: mail, login items, notifications, updates.
LanguagePart serviceLines();

/// The command `keyrow`.
LanguagePart toolLines();

/// All of it.
std::array<LanguagePart, 10> language();

}  // namespace keyrow::sim
