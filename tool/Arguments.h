#pragma once

#include <expected>
#include <optional>
#include <string>
#include <vector>

#include "core/FnState.h"

namespace keyrow::tool {

/// What was typed behind `keyrow`, as far as that can be told without looking at anything.
struct Arguments {
  enum class Command {
    help,
    version,
    status,
    showMode,
    setMode,
    toggleMode,
    listOverrides,
    setOverride,
    clearOverride,
    listKeyboards,
    setKeyboard,
    listSettings,
    showSetting,
    setSetting,
    watch,
    doctor,
  };

  Command command = Command::help;
  /// An application, a keyboard or a setting, as it was typed.
  std::string subject{};
  /// A mode, "follow", or a setting's value, as it was typed.
  std::string value{};
  bool isJson = false;
};

/// What the arguments mean, or what is wrong with them, in words for people.
std::expected<Arguments, std::string> parse(const std::vector<std::string>& arguments);

/// How the command is used, line by line.
const std::vector<std::string>& usage();

}  // namespace keyrow::tool
