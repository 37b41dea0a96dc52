#include <array>
#include <memory>

#include "sim/scenario/Command.h"

namespace keyrow::sim {

namespace {

/// Something the user tells the running Keyrow.
Play tellKeyrow(std::function<void(Keyrow&)> tell) {
  return [tell = std::move(tell)](Stage& stage) {
    auto* process = stage.process();
    if (!process) return keyrowNotRunning();
    process->perform([tell, process] { tell(process->keyrow()); });
    return Outcome{};
  };
}

Play parseLaunch(LineReader& line) {
  line.require("keyrow");
  return [](Stage& stage) {
    stage.launchKeyrow();
    return Outcome{};
  };
}

Play parseQuit(LineReader& line) {
  line.require("keyrow");
  return [](Stage& stage) {
    if (!stage.process()) return keyrowNotRunning();
    stage.process()->quit();
    return Outcome{};
  };
}

Play parseKill(LineReader& line) {
  line.require("keyrow");
  return [](Stage& stage) {
    if (!stage.process()) return keyrowNotRunning();
    stage.process()->kill();
    return Outcome{};
  };
}

Play parseHang(LineReader& line) {
  line.require("keyrow");
  auto behaviour = Hang::reachable;
  if (!line.atEnd()) {
    constexpr std::array<std::string_view, 2> words{"unreachable", "unstoppable"};
    behaviour = line.oneOf(words) == 0 ? Hang::unreachable : Hang::unstoppable;
  }
  return [behaviour](Stage& stage) {
    if (!stage.process()) return keyrowNotRunning();
    stage.process()->hang(behaviour);
    return Outcome{};
  };
}

Play parseResume(LineReader& line) {
  line.require("keyrow");
  return [](Stage& stage) {
    if (!stage.process()) return keyrowNotRunning();
    stage.process()->resume();
    return Outcome{};
  };
}

Play parseReopen(LineReader& line) {
  line.require("keyrow");
  return [](Stage& stage) {
    if (!stage.process()) return keyrowNotRunning();
    stage.process()->reopen();
    return Outcome{};
  };
}

using ModeCommand = std::function<void(ModePolicy&, const KeyboardDeviceSource*)>;

/// A command about the mode, given with the mouse or, at the end of the line, "on" a
/// keyboard: one of its keys is pressed, and Keyrow has to tell by itself which keyboard
/// that was.
Play modeCommand(LineReader& line, ModeCommand command) {
  const bool byKeyboard = line.accept("on");
  const auto name = byKeyboard ? line.word("the name of a keyboard") : std::string{};
  return [byKeyboard, name, command = std::move(command)](Stage& stage) {
    auto* process = stage.process();
    if (!process) return keyrowNotRunning();
    std::shared_ptr<const KeyboardDeviceSource> source;
    if (byKeyboard) {
      const auto keyboard = stage.mac.keyboards.find(name);
      if (!keyboard) return unplayable("no keyboard " + name + " is attached");
      constexpr std::uint32_t keyboardPage = 7;
      stage.mac.sendInput(keyboard, keyboardPage);
      source = process->keyrow().keyboardSourceMonitor().source(stage.mac.machAbsoluteTime());
    }
    process->perform(
        [command, process, source] { command(process->keyrow().modePolicy(), source.get()); });
    return Outcome{};
  };
}

Play parseSet(LineReader& line) {
  constexpr std::array<std::string_view, 2> scopes{"global", "override"};
  const bool global = line.oneOf(scopes) == 0;
  const auto state = line.mode();
  if (global) {
    return modeCommand(line, [state](ModePolicy& policy, const KeyboardDeviceSource* source) {
      policy.setGlobalFnState(state, source);
    });
  }
  line.require("for");
  const auto app = line.word("a bundle identifier");
  return modeCommand(line, [state, app](ModePolicy& policy, const KeyboardDeviceSource* source) {
    policy.setLocalFnState(state, app, source);
  });
}

Play parseToggle(LineReader& line) {
  constexpr std::array<std::string_view, 2> scopes{"global", "override"};
  if (line.oneOf(scopes) == 0) {
    return modeCommand(line, [](ModePolicy& policy, const KeyboardDeviceSource* source) {
      policy.toggleGlobalFnState(source);
    });
  }
  return modeCommand(line, [](ModePolicy& policy, const KeyboardDeviceSource* source) {
    policy.toggleLocalOverride(source);
  });
}

Play parseClear(LineReader& line) {
  line.require("override");
  return modeCommand(line, [](ModePolicy& policy, const KeyboardDeviceSource* source) {
    policy.clearLocalOverride(source);
  });
}

bool onOrOff(LineReader& line) {
  constexpr std::array<std::string_view, 2> words{"on", "off"};
  return line.oneOf(words) == 0;
}

Play settingDiagnostics(LineReader& line) {
  return tellKeyrow([on = onOrOff(line)](Keyrow& keyrow) {
    keyrow.settings().setEnhancedDiagnosticsEnabled(on);
  });
}

Play settingCapsLock(LineReader& line) {
  return tellKeyrow(
      [on = onOrOff(line)](Keyrow& keyrow) { keyrow.settings().setShowCapsLockIndicator(on); });
}

Play settingExternalKeys(LineReader& line) {
  return tellKeyrow([on = onOrOff(line)](Keyrow& keyrow) {
    keyrow.settings().setApplyFnModeToExternalFunctionKeys(on);
  });
}

Play settingFnReplacement(LineReader& line) {
  std::array<std::string_view, fnReplacementModifierTable.size() + 1> words{"none"};
  for (std::size_t index = 1; index < words.size(); ++index) {
    words[index] = fnReplacementModifierTable[index - 1].second;
  }
  const auto modifier = fnReplacementModifierFromRawValue(words[line.oneOf(words)]);
  return tellKeyrow(
      [modifier](Keyrow& keyrow) { keyrow.settings().setFnReplacementModifier(modifier); });
}

Play settingShortcut(LineReader& line) {
  if (line.accept("default")) {
    return tellKeyrow([](Keyrow& keyrow) { keyrow.settings().resetLocalToggleShortcut(); });
  }
  const auto keyCode = static_cast<std::uint16_t>(line.number(65535));
  auto characters =
      line.atEnd() ? std::nullopt : std::optional{line.quotedText("what the key types, in quotes")};
  return tellKeyrow([keyCode, characters](Keyrow& keyrow) {
    auto& settings = keyrow.settings();
    settings.setLocalToggleShortcut(settings.makeLocalToggleShortcut(keyCode, characters));
  });
}

Play parseSetting(LineReader& line) {
  struct Setting {
    std::string_view name;
    Play (*parse)(LineReader&);
  };
  constexpr std::array<Setting, 5> settings{{{"enhanced-diagnostics", settingDiagnostics},
                                             {"caps-lock-indicator", settingCapsLock},
                                             {"external-keys", settingExternalKeys},
                                             {"fn-replacement", settingFnReplacement},
                                             {"shortcut", settingShortcut}}};
  std::array<std::string_view, settings.size()> names;
  for (std::size_t index = 0; index < names.size(); ++index) names[index] = settings[index].name;
  return settings[line.oneOf(names)].parse(line);
}

constexpr std::array<Command, 10> commands{{
    {"launch", "launch keyrow",
     "The user starts Keyrow. Where one runs already, another instance starts; all other lines "
     "mean the one that was started last.",
     "launch keyrow", parseLaunch},
    {"reopen", "reopen keyrow", "The user opens the running Keyrow, in Finder or in the Dock.",
     "reopen keyrow", parseReopen},
    {"quit", "quit keyrow", "The user quits Keyrow.", "quit keyrow", parseQuit},
    {"kill", "kill keyrow", "Keyrow ends at once and without a word, as after kill -9.",
     "kill keyrow", parseKill},
    {"hang", "hang keyrow [unreachable|unstoppable]",
     "Keyrow stops answering. When it is unreachable it cannot even be asked to quit, and when it "
     "is unstoppable it cannot be forced to.",
     "hang keyrow unreachable", parseHang},
    {"resume", "resume keyrow", "Keyrow answers again, and catches up with what it missed.",
     "resume keyrow", parseResume},
    {"set", "set global MODE [on NAME] | set override MODE for APP [on NAME]",
     "The user chooses a mode, special or standard.",
     "set override standard for com.apple.TextEdit", parseSet},
    {"toggle", "toggle global|override [on NAME]",
     "The user flips the global mode, or the frontmost application's override; with the mouse, or "
     "with keys on a keyboard.",
     "toggle override on usb1", parseToggle},
    {"clear", "clear override [on NAME]",
     "The user takes the frontmost application's override away; where there is none, this flips "
     "the global mode.",
     "clear override", parseClear},
    {"setting", "setting NAME VALUE",
     "The user changes a setting: enhanced-diagnostics, caps-lock-indicator or external-keys on "
     "or off; fn-replacement to a modifier such as rightCommand, or to none; shortcut to a key "
     "code with what the key types in quotes, or to default.",
     "setting enhanced-diagnostics on", parseSetting},
}};

}  // namespace

std::span<const Command> keyrowCommands() { return commands; }

}  // namespace keyrow::sim
