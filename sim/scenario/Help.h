#pragma once

#include <array>
#include <string_view>

namespace keyrow::sim {

/// Something that the help explains.
struct HelpEntry {
  /// What it begins with.
  std::string_view words;
  std::string_view usage;
  std::string_view summary;
};

/// How an expectation asks for what has happened.
inline constexpr std::array<HelpEntry, 3> eventForms{{
    {"expect no", "expect no EVENT",
     "It did not happen since the last line that is no expectation began; a word alone stands for "
     "any event of it, as in: expect no key"},
    {"expect times", "expect EVENT N times", "It happened just so many times."},
    {"expect then", "expect EVENT then EVENT ...", "They happened in this order."},
}};

/// What stands for something else in the lines.
inline constexpr std::array<HelpEntry, 9> placeholders{{
    {"APP", "APP", "A bundle identifier, such as com.apple.TextEdit."},
    {"NAME", "NAME", "What the scenario calls a keyboard, such as usb1."},
    {"MODE", "MODE", "special (media and system controls) or standard (F1 to F12)."},
    {"DURATION", "DURATION",
     "A number with a unit: 350ms, 0.35s, 5min, 1h, 2d, 10ns; at most 1000h."},
    {"VALUE", "VALUE",
     "true, false, 3, 0x1f, 0.5, \"text\", {}, or KEY=VALUE ... for a dictionary. It is stored as "
     "it stands: 1 is a number and \"1\" a text, which is what the command defaults stores for an "
     "unmarked 1."},
    {"KEYS", "KEYS",
     "Names of keys joined by +: those that Keyrow shows (A, F5, `, Space), Escape, fn, and "
     "control, option, command and shift, which may carry left- or right-."},
    {"PID", "PID", "A process identifier; the first Keyrow has 501, the next 502."},
    {"EVENT", "EVENT",
     "What the timeline prints, such as: hardware special -> standard. It begins with hardware, "
     "preference, defaults, override, status, log, screen, key, tap, process or fault."},
    {"CALL", "CALL", "A call of the system that can fail; help CALL lists them."},
}};

/// What only the prompt knows.
inline constexpr std::array<HelpEntry, 11> promptWords{{
    {"status", "status", "Where things stand."},
    {"menu", "menu", "Opens the menu of Keyrow's item, and draws it."},
    {"settings", "settings", "Draws the open pane of the settings window."},
    {"system", "system", "The HID system as it is, and what is held open."},
    {"report", "report", "The log report that goes with a bug report."},
    {"help", "help [WORD]", "Everything, or what there is to say of a word."},
    {"undo", "undo", "Takes the last line back."},
    {"save", "save FILE", "Writes what was played as a scenario."},
    {"play", "play FILE", "Plays a scenario, and goes on from there."},
    {"exit", "exit", "Leaves, as Ctrl-D does."},
    {"Ctrl-C", "Ctrl-C", "Drops the line that is being typed."},
}};

}  // namespace keyrow::sim
