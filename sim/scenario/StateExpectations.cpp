#include <algorithm>
#include <array>

#include "app/DiagnosticsLog.h"
#include "sim/machine/PropertyText.h"
#include "sim/scenario/Command.h"

namespace keyrow::sim {

namespace {

std::string modeName(std::optional<FnState> state) {
  if (!state) return "none";
  return *state == FnState::standard ? "standard" : "special";
}

Outcome notRunning(std::string_view what) {
  return unmet("expected " + std::string{what} + ", but Keyrow is not running");
}

Play expectHardware(LineReader& line) {
  constexpr std::array<std::string_view, 3> modes{"special", "standard", "unreadable"};
  return [expected = std::string{modes[line.oneOf(modes)]}](Stage& stage) {
    return expectEqual("the hardware", expected, std::string{stage.mac.hid.modeName()});
  };
}

Play expectPreference(LineReader& line) {
  return [expected = line.valueOrNone()](Stage& stage) {
    return expectEqual("the system preference", propertyText(expected),
                       propertyText(stage.mac.globalPreferences.value(
                           GlobalPreferences::domain, FnStateController::fnStateDefaultsKey)));
  };
}

Play expectGlobal(LineReader& line) {
  return [expected = line.modeOrNone()](Stage& stage) {
    return expectEqual("the stored global mode", modeName(expected),
                       modeName(stage.storedFnStates().global()));
  };
}

Play expectOverride(LineReader& line) {
  const auto app = line.word("a bundle identifier");
  return [app, expected = line.modeOrNone()](Stage& stage) {
    return expectEqual("the override of " + app, modeName(expected),
                       modeName(stage.storedFnStates().local(app)));
  };
}

Play expectScope(LineReader& line) {
  constexpr std::array<std::string_view, 2> scopes{"global", "local"};
  return [expected = std::string{scopes[line.oneOf(scopes)]}](Stage& stage) {
    if (!stage.process()) return notRunning("the scope to be " + expected);
    const bool local = stage.process()->keyrow().modePolicy().isLocalScopeActive();
    return expectEqual("the scope", expected, local ? "local" : "global");
  };
}

Play expectDefaults(LineReader& line) {
  const auto key = line.word("the key of a setting");
  return [key, expected = line.valueOrNone()](Stage& stage) {
    return expectEqual("the setting " + key, propertyText(expected),
                       propertyText(stage.mac.defaults.value(appIdentifier, key)));
  };
}

std::string listOf(const std::vector<LogEntry>& entries) {
  if (entries.empty()) return "nothing was logged";
  std::string text = "the log says";
  for (const auto& entry : entries) {
    text += "\n    " + entry.category + " " + std::string{logLevelName(entry.level)} + " " +
            quoted(entry.message);
  }
  return text;
}

Play expectLog(LineReader& line) {
  if (line.accept("nothing")) {
    return [](Stage& stage) {
      const auto entries = stage.recentLog();
      return entries.empty() ? Outcome{}
                             : unmet("expected nothing in the log, but " + listOf(entries));
    };
  }
  constexpr std::array<std::string_view, 4> categories{"app", "input", "state", "hardware"};
  constexpr std::array<std::string_view, 5> levels{"debug", "info", "notice", "error", "fault"};
  const std::string category{categories[line.oneOf(categories)]};
  const auto level = std::ranges::find_if(levels, [&](auto name) { return line.accept(name); });
  const std::string levelName{level == levels.end() ? "" : *level};
  const auto message = line.quotedText("the line in quotation marks");
  return [category, levelName, message](Stage& stage) {
    const auto entries = stage.recentLog();
    const bool found = std::ranges::any_of(entries, [&](const LogEntry& entry) {
      return entry.category == category && entry.message == message &&
             (levelName.empty() || logLevelName(entry.level) == levelName);
    });
    if (found) return Outcome{};
    return unmet("expected in the log: " + category + (levelName.empty() ? "" : " ") + levelName +
                 " " + quoted(message) + ", but " + listOf(entries));
  };
}

Play expectSource(LineReader& line) {
  const auto name = line.word("the name of a keyboard, or none");
  const auto offset = line.accept("at") ? line.signedDuration() : std::chrono::nanoseconds{0};
  return [name, offset](Stage& stage) {
    if (!stage.process()) return notRunning("the source to be " + name);
    const auto tickOffset = offset.count() * std::int64_t{stage.mac.machTimebase.denom} /
                            std::int64_t{stage.mac.machTimebase.numer};
    const auto now = static_cast<std::int64_t>(stage.mac.machAbsoluteTime());
    const auto timestamp = static_cast<std::uint64_t>(std::max<std::int64_t>(now + tickOffset, 0));
    const auto source = stage.process()->keyrow().keyboardSourceMonitor().source(timestamp);
    return expectEqual(
        "the source of a key event now", name,
        stage.mac.keyboards.nameOf(source ? source->registryID : std::nullopt).value_or("none"));
  };
}

Play expectShortcut(LineReader& line) {
  return [expected = line.quotedText("the name of a key in quotation marks")](Stage& stage) {
    if (!stage.process()) return notRunning("the shortcut to be " + expected);
    return expectEqual("the shortcut", expected,
                       stage.process()->keyrow().settings().localToggleShortcut().displayName);
  };
}

Play expectReport(LineReader& line) {
  return [expected = line.quotedText("a text in quotation marks")](Stage& stage) {
    if (!stage.process()) return notRunning("the log report to hold " + quoted(expected));
    const auto report = stage.process()->keyrow().diagnosticsLog().recentLogReport();
    if (report.find(expected) != std::string::npos) return Outcome{};
    return unmet("expected the log report to hold " + quoted(expected) + ", but it is\n" + report);
  };
}

/// A process that has ended may hold nothing; one that runs may hold no service and no
/// connection, since it opens and closes them within one action.
Play expectLeaks(LineReader& line) {
  line.require("none");
  return [](Stage& stage) {
    std::string leaks;
    for (const auto& [handle, count] : stage.mac.openHandles.all()) {
      const auto& [kind, process] = handle;
      const bool runs = stage.isRunning(process);
      if (runs && kind != "HidService" && kind != "HidConnection") continue;
      leaks += (leaks.empty() ? "" : ", ") + std::to_string(count) + " " + kind;
    }
    return leaks.empty() ? Outcome{} : unmet("expected no leaks, but still open: " + leaks);
  };
}

constexpr std::array<Command, 11> commands{{
    {"expect hardware", "expect hardware special|standard|unreadable",
     "The mode that the hardware holds.", "expect hardware standard", expectHardware},
    {"expect preference", "expect preference VALUE|none",
     "The system preference com.apple.keyboard.fnState; true means standard.",
     "expect preference true", expectPreference},
    {"expect global", "expect global MODE|none", "The stored global mode.", "expect global special",
     expectGlobal},
    {"expect override", "expect override APP MODE|none", "The stored override of an application.",
     "expect override com.apple.TextEdit standard", expectOverride},
    {"expect scope", "expect scope global|local",
     "Whether the mode in force is the global mode or an override.", "expect scope local",
     expectScope},
    {"expect defaults", "expect defaults KEY VALUE|none", "A stored setting as it is.",
     "expect defaults showCapsLockIndicator true", expectDefaults},
    {"expect log", "expect log CATEGORY [LEVEL] \"TEXT\" | expect log nothing",
     "A line that was logged since the last action began, to the letter; or that none was.",
     "expect log state notice \"Set the global function key mode to standard function keys.\"",
     expectLog},
    {"expect source", "expect source NAME|none [at +DURATION|-DURATION]",
     "The keyboard to which Keyrow attributes a key event of this moment, or of one later or "
     "earlier.",
     "expect source usb1 at +10ms", expectSource},
    {"expect shortcut", "expect shortcut \"NAME\"", "The key of the per-app shortcut.",
     "expect shortcut \"F5\"", expectShortcut},
    {"expect report", "expect report \"TEXT\"",
     "A text in the log report that goes with a bug report.",
     "expect report \"No recent Keyrow logs were available.\"", expectReport},
    {"expect leaks", "expect leaks none", "Nothing is held open that should be closed or released.",
     "expect leaks none", expectLeaks},
}};

}  // namespace

std::span<const Command> stateExpectations() { return commands; }

}  // namespace keyrow::sim
