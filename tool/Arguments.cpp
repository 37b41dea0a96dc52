#include "tool/Arguments.h"

#include <algorithm>
#include <string_view>

#include "core/Commands.h"
#include "core/Words.h"

namespace keyrow::tool {

namespace {

using Command = Arguments::Command;
using Words = std::vector<std::string>;
using Parsed = std::expected<Arguments, std::string>;

std::unexpected<std::string> wrong(std::string problem) {
  return std::unexpected{std::move(problem)};
}

Parsed tooMuch(const Words& words, std::size_t expected) {
  return wrong("Nothing belongs behind " + inQuotes(words[expected - 1]) + ", but there is " +
               inQuotes(words[expected]) + ".");
}

/// Takes "--json" away, where it may stand.
bool takeJson(Words& words) { return std::erase(words, "--json") > 0; }

Parsed parsePlain(Words words, Command command, bool mayBeJson) {
  const bool isJson = mayBeJson && takeJson(words);
  if (words.size() > 1) return tooMuch(words, 1);
  return Arguments{.command = command, .isJson = isJson};
}

Parsed parseMode(const Words& words) {
  if (words.size() == 1) return Arguments{.command = Command::showMode};
  if (words.size() > 2) return tooMuch(words, 2);
  if (words[1] == "toggle") return Arguments{.command = Command::toggleMode};
  if (!fnStateFromWord(words[1])) {
    return wrong(unknownWord("mode", words[1], {"special", "standard", "toggle"}));
  }
  return Arguments{.command = Command::setMode, .value = words[1]};
}

Parsed parseOverride(const Words& words) {
  if (words.size() == 1 || words[1] == "list") {
    if (words.size() > 2) return tooMuch(words, 2);
    return Arguments{.command = Command::listOverrides};
  }
  if (words[1] == "clear") {
    if (words.size() < 3) return wrong("keyrow override clear needs an application.");
    if (words.size() > 3) return tooMuch(words, 3);
    return Arguments{.command = Command::clearOverride, .subject = words[2]};
  }
  if (words[1] != "set") {
    return wrong(unknownWord("command", "override " + words[1],
                             {"override list", "override set", "override clear"}));
  }
  if (words.size() < 4) return wrong("keyrow override set needs an application and a mode.");
  if (words.size() > 4) return tooMuch(words, 4);
  if (!fnStateFromWord(words[3])) {
    return wrong(unknownWord("mode", words[3], {"special", "standard"}));
  }
  return Arguments{.command = Command::setOverride, .subject = words[2], .value = words[3]};
}

Parsed parseKeyboard(const Words& words) {
  if (words.size() == 1 || words[1] == "list") {
    if (words.size() > 2) return tooMuch(words, 2);
    return Arguments{.command = Command::listKeyboards};
  }
  if (words[1] != "set") {
    return wrong(unknownWord("command", "keyboard " + words[1], {"keyboard list", "keyboard set"}));
  }
  if (words.size() < 4) {
    return wrong("keyrow keyboard set needs a keyboard, and special, standard or follow.");
  }
  if (words.size() > 4) return tooMuch(words, 4);
  if (!fnStateFromWord(words[3]) && words[3] != Commands::follow) {
    return wrong(
        unknownWord("mode", words[3], {"special", "standard", std::string{Commands::follow}}));
  }
  return Arguments{.command = Command::setKeyboard, .subject = words[2], .value = words[3]};
}

Parsed parseSettings(const Words& words) {
  if (words.size() == 1) return Arguments{.command = Command::listSettings};
  if (words.size() == 2) return Arguments{.command = Command::showSetting, .subject = words[1]};
  if (words.size() > 3) return tooMuch(words, 3);
  return Arguments{.command = Command::setSetting, .subject = words[1], .value = words[2]};
}

}  // namespace

Parsed parse(const Words& words) {
  if (words.empty()) return wrong("Tell keyrow what to do.");
  const auto& first = words.front();
  if (first == "help" || first == "--help" || first == "-h") {
    return parsePlain(words, Command::help, false);
  }
  if (first == "--version") return parsePlain(words, Command::version, false);
  if (first == "status") return parsePlain(words, Command::status, true);
  if (first == "watch") return parsePlain(words, Command::watch, true);
  if (first == "doctor") return parsePlain(words, Command::doctor, false);
  if (first == "mode") return parseMode(words);
  if (first == "override") return parseOverride(words);
  if (first == "keyboard") return parseKeyboard(words);
  if (first == "settings") return parseSettings(words);
  return wrong(unknownWord(
      "command", first,
      {"status", "mode", "override", "keyboard", "settings", "watch", "doctor", "help"}));
}

const Words& usage() {
  static const Words lines{
      "usage: keyrow status [--json]",
      "       keyrow mode [special|standard|toggle]",
      "       keyrow override [list | set APP special|standard | clear APP]",
      "       keyrow keyboard [list | set NAME special|standard|follow]",
      "       keyrow settings [NAME [VALUE|default]]",
      "       keyrow watch [--json]",
      "       keyrow doctor",
      "       keyrow --version",
  };
  return lines;
}

}  // namespace keyrow::tool
