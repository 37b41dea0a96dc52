#include "sim/scenario/Prompt.h"

#include <array>
#include <string>

#include "sim/machine/PropertyText.h"
#include "sim/scenario/Drawing.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/TimelinePrinter.h"

namespace keyrow::sim {

namespace {

/// A line of the input; absent at its end. Of a line without an end no more is kept than
/// it takes to see that it is too long.
std::optional<std::string> readLine(std::istream& in) {
  std::string line;
  char c = 0;
  bool any = false;
  while (in.get(c)) {
    any = true;
    if (c == '\n') return line;
    if (line.size() <= maximumLineLength) line += c;
  }
  return any ? std::optional{line} : std::nullopt;
}

std::string modeText(std::optional<FnState> state) {
  return state ? std::string{keyrow::modeText(*state)} : "none";
}

std::string windowText(const SimulatedSettingsWindowView& window) {
  return window.isVisible() ? std::string{window.selectedTab().title} : "closed";
}

void printStatus(std::ostream& out, Stage& stage) {
  out << "  frontmost   " << stage.mac.applications.frontmost().value_or("none") << '\n'
      << "  keyboard    " << stage.mac.hid.modeName() << '\n'
      << "  global      " << modeText(stage.storedFnStates().global()) << '\n';
  for (const auto& app : stage.storedFnStates().localBundleIdentifiers()) {
    out << "  override    " << app << ": " << modeText(stage.storedFnStates().local(app)) << '\n';
  }
  if (!stage.process()) {
    out << "  keyrow      not running\n";
    return;
  }
  auto& keyrow = stage.process()->keyrow();
  out << "  keyrow      running, "
      << (keyrow.modePolicy().isLocalScopeActive() ? "override in force" : "global mode in force")
      << '\n'
      << "  menu bar    " << drawStatusItem(stage.process()->statusItem()) << '\n'
      << "  window      " << windowText(stage.process()->settingsWindow()) << '\n'
      << "  shortcut    Fn+" << keyrow.settings().localToggleShortcut().displayName << '\n';
}

void printHardware(std::ostream& out, const Stage& stage) {
  out << "  HIDParameters                " << propertyText(stage.mac.hid.parameters()) << '\n'
      << "  com.apple.keyboard.fnState   "
      << propertyText(stage.mac.globalPreferences.value(GlobalPreferences::domain,
                                                        FnStateController::fnStateDefaultsKey))
      << '\n';
  for (const auto& [handle, count] : stage.mac.openHandles.all()) {
    out << "  open                         " << count << " " << handle.first << '\n';
  }
}

void printLog(std::ostream& out, Stage& stage) {
  if (stage.process()) {
    out << stage.process()->keyrow().diagnosticsLog().recentLogReport() << '\n';
  } else {
    out << "  Keyrow is not running, so it cannot read its log.\n";
  }
}

/// Opens the menu and leaves it open, so that something can be chosen.
void printMenu(std::ostream& out, Stage& stage) {
  if (!stage.process()) {
    out << "  Keyrow is not running, so it has no menu.\n";
    return;
  }
  auto& item = stage.process()->statusItem();
  if (!item.menu()) item.click(ClickEvent::rightMouseDown);
  if (item.menu()) out << drawMenu(*item.menu());
}

void printCommands(std::ostream& out, std::span<const Command> commands, std::string_view word) {
  for (const auto& command : commands) {
    if (!command.words.starts_with(word)) continue;
    out << "  " << command.usage << "\n      " << command.summary << '\n';
  }
}

/// Draws what the open settings window shows.
void printSettings(std::ostream& out, Stage& stage) {
  if (!stage.process() || !stage.process()->settingsWindow().isVisible()) {
    out << "  The settings window is closed. Try: reopen keyrow\n";
    return;
  }
  out << drawSettings(stage.process()->simulatedPlatform());
}

/// Does what only the prompt knows; false when the line is something else.
bool answer(std::ostream& out, Stage& stage, std::string_view line) {
  constexpr std::string_view help = "help";
  if (line == "status") {
    printStatus(out, stage);
  } else if (line == "menu") {
    printMenu(out, stage);
  } else if (line == "settings") {
    printSettings(out, stage);
  } else if (line == "hardware") {
    printHardware(out, stage);
  } else if (line == "log") {
    printLog(out, stage);
  } else if (line == help || line.starts_with("help ")) {
    printHelp(out, line.substr(std::min(line.size(), help.size() + 1)));
  } else {
    return false;
  }
  return true;
}

}  // namespace

PlayResult runPrompt(std::istream& in, std::ostream& out, PromptStyle style) {
  Stage stage;
  TimelinePrinter printer{out, Detail::timeline, style.inColour};
  stage.mac.timeline.setListener(
      [&printer](const TimelineEvent& event) { printer.didHappen(event); });
  const Scenario session{.name = "line", .steps = {}};
  if (style.isInteractive) {
    out << "A simulated Mac, just switched on. Try: launch keyrow, then help. exit leaves.\n";
  }

  PlayResult result;
  for (std::size_t number = 1;; ++number) {
    if (style.isInteractive) out << "> " << std::flush;
    const auto line = readLine(in);
    if (!line || *line == "exit") return result;
    if (answer(out, stage, *line)) continue;

    const auto step = parseLine(*line, number);
    if (!step) {
      out << "line:" << number << ":" << step.error().column << ": " << step.error().message
          << '\n';
      ++result.unplayableLines;
      continue;
    }
    if (!*step) continue;
    if (!style.isInteractive) printer.willPlay(**step, stage.mac);
    const auto outcome = playStep(**step, stage);
    printer.didPlay(session, **step, outcome);
    if (outcome.kind == Outcome::Kind::unplayable) ++result.unplayableLines;
    if (outcome.kind == Outcome::Kind::unmet) ++result.unmetExpectations;
  }
}

void printHelp(std::ostream& out, std::string_view word) {
  for (const auto group : actions()) printCommands(out, group, word);
  for (const auto group : expectations()) printCommands(out, group, word);
  constexpr std::array<std::string_view, 7> promptOnly{
      "status            where things stand",
      "menu              the menu of Keyrow's item",
      "settings          the open pane of the settings window",
      "hardware          the HID system as it is",
      "log               the log report that goes with a bug report",
      "help [WORD]       this list, or what begins with WORD",
      "exit              leaves"};
  if (!word.empty()) return;
  for (const auto line : promptOnly) out << "  " << line << '\n';
}

}  // namespace keyrow::sim
