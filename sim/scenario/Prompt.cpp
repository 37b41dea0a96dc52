#include "sim/scenario/Prompt.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>
#include <utility>

#include "sim/machine/PropertyText.h"
#include "sim/scenario/Drawing.h"
#include "sim/scenario/Help.h"
#include "sim/scenario/Language.h"
#include "sim/scenario/PaneState.h"
#include "sim/scenario/ScenarioParser.h"

namespace keyrow::sim {

namespace {

std::string modeText(std::optional<FnState> state) {
  return state ? std::string{keyrow::modeText(*state)} : "none";
}

std::string windowText(const SimulatedSettingsWindowView& window) {
  return window.isVisible() ? std::string{window.selectedTab().title} : "closed";
}

std::string joined(const std::vector<std::string>& words) {
  std::string text;
  for (const auto& word : words) text += (text.empty() ? "" : ", ") + word;
  return text.empty() ? "none" : text;
}

/// The line as a scenario holds it.
std::string lineOf(const Step& step) {
  if (!step.isComment()) return step.text;
  return step.text.empty() ? "#" : "# " + step.text;
}

}  // namespace

LineSource linesOf(std::istream& in) {
  return [&in]() -> std::optional<std::string> {
    std::string line;
    char c = 0;
    bool any = false;
    while (in.get(c)) {
      any = true;
      if (c == '\n') return line;
      if (line.size() <= maximumLineLength) line += c;
    }
    return any ? std::optional{line} : std::nullopt;
  };
}

Prompt::Prompt(std::ostream& out, PromptStyle style)
    : out_{out},
      style_{style},
      printer_{out, Detail::timeline, style.inColour},
      stage_{std::make_unique<Stage>()} {
  listen();
  if (style_.isInteractive) {
    out_ << "A simulated Mac, just switched on. Try: launch keyrow, then help. exit leaves.\n";
  }
}

PlayResult Prompt::run(const LineSource& nextLine) {
  while (const auto line = nextLine()) {
    if (trimmed(*line) == "exit") break;
    ++lineNumber_;
    takeLine(*line);
    out_ << std::flush;
  }
  return result_;
}

void Prompt::takeLine(const std::string& line) {
  if (!answer(trimmed(line))) playLine(line);
}

/// Does what only the prompt knows; false when the line is something else.
bool Prompt::answer(std::string_view line) {
  const auto blank = std::min(line.find(' '), line.size());
  const auto word = line.substr(0, blank);
  const std::string rest{trimmed(line.substr(blank))};
  if (word == "help") {
    printHelp(out_, rest);
  } else if (word == "save") {
    save(rest);
  } else if (word == "play") {
    playFile(rest);
  } else if (line == "undo") {
    undo();
  } else if (line == "status") {
    printStatus();
  } else if (line == "menu") {
    printMenu();
  } else if (line == "settings") {
    printSettings();
  } else if (line == "system") {
    printHardware();
  } else if (line == "report") {
    printLog();
  } else {
    return false;
  }
  return true;
}

void Prompt::playLine(const std::string& line) {
  const auto parsed = parseLine(line, lineNumber_);
  if (!parsed) {
    out_ << "line:" << lineNumber_ << ":" << parsed.error().column << ": " << parsed.error().message
         << '\n';
    if (!style_.isInteractive) ++result_.unplayableLines;
    return;
  }
  if (!*parsed) return;
  const auto& step = **parsed;
  if (!style_.isInteractive) printer_.willPlay(step, stage_->mac);
  const auto outcome = playStep(step, *stage_);
  printer_.didPlay({.name = "line", .steps = {}}, step, outcome);
  const bool isUnplayable =
      outcome.kind == Outcome::Kind::unplayable || outcome.kind == Outcome::Kind::endless;
  if (!isUnplayable || !style_.isInteractive) result_.count(step, outcome);
  if (isUnplayable) {
    // Something of it may have been carried out.
    replay();
  } else {
    played_.push_back(step);
  }
  const auto* action = step.action();
  if (style_.isInteractive && action && std::holds_alternative<Wait>(*action)) {
    printer_.showTime(stage_->mac);
  }
}

void Prompt::playFile(const std::string& path) {
  if (path.empty()) {
    refuse("play needs the name of a file.");
    return;
  }
  const auto scenario = readScenario(path);
  if (!scenario) {
    printErrors(out_, path, scenario.error());
    if (!style_.isInteractive) ++result_.unplayableLines;
    return;
  }
  for (const auto& step : scenario->steps) {
    printer_.willPlay(step, stage_->mac);
    const auto outcome = playStep(step, *stage_);
    printer_.didPlay(*scenario, step, outcome);
    const bool isPlayable =
        outcome.kind == Outcome::Kind::done || outcome.kind == Outcome::Kind::unmet;
    if (isPlayable || !style_.isInteractive) result_.count(step, outcome);
    if (!isPlayable) {
      replay();
      return;
    }
    played_.push_back(step);
  }
}

void Prompt::refuse(const std::string& why) {
  out_ << "  " << why << '\n';
  if (!style_.isInteractive) ++result_.unplayableLines;
}

void Prompt::save(const std::string& path) {
  if (path.empty()) {
    refuse("save needs the name of a file.");
    return;
  }
  const bool isOurs = std::ranges::find(saved_, path) != saved_.end();
  std::error_code ignored;
  if (!isOurs && std::filesystem::exists(path, ignored)) {
    refuse(path + " is there already; choose another name.");
    return;
  }
  std::ofstream file{path};
  for (const auto& step : played_) file << lineOf(step) << '\n';
  file.close();
  if (!file) {
    refuse(path + " could not be written.");
    return;
  }
  saved_.push_back(path);
  out_ << "  " << played_.size() << (played_.size() == 1 ? " line" : " lines") << " saved.\n";
}

void Prompt::undo() {
  if (played_.empty()) {
    out_ << "  There is nothing to take back.\n";
    return;
  }
  const auto last = lineOf(played_.back());
  played_.pop_back();
  replay();
  out_ << "  Taken back: " << last << '\n';
}

void Prompt::replay() {
  stage_ = std::make_unique<Stage>();
  for (const auto& step : played_) playStep(step, *stage_);
  listen();
}

void Prompt::listen() {
  stage_->mac.timeline.setListener(
      [this](const TimelineEvent& event) { printer_.didHappen(event); });
}

void Prompt::printStatus() {
  auto& mac = stage_->mac;
  const auto stored = stage_->storedFnStates();
  out_ << "  time        " << printer_.dateAndTime(mac.scheduler.now())
       << (mac.power.isAsleep() ? ", asleep" : "") << '\n'
       << "  frontmost   " << mac.applications.nameOfFrontmost() << '\n'
       << "  hardware    " << mac.hid.modeName() << '\n'
       << "  keyboards   " << joined(mac.keyboards.attachedNames()) << '\n'
       << "  permissions accessibility " << (mac.isAccessibilityGranted ? "granted" : "revoked")
       << ", input-monitoring " << nameOf(mac.inputMonitoring.access()) << '\n'
       << "  tap         " << mac.eventTaps.state() << '\n'
       << "  global      " << modeText(stored.global()) << '\n';
  for (const auto& app : stored.localBundleIdentifiers()) {
    out_ << "  override    " << app << ": " << modeText(stored.local(app)) << '\n';
  }
  auto* process = stage_->process();
  if (!process) {
    out_ << "  keyrow      not running\n";
    return;
  }
  auto& keyrow = process->keyrow();
  out_ << "  keyrow      " << stage_->runningProcesses()
       << (process->isHanging() ? ", hanging" : "") << ", "
       << (keyrow.modePolicy().isLocalScopeActive() ? "override in force" : "global mode in force")
       << '\n'
       << "  status      " << drawStatusItem(process->statusItem()) << '\n'
       << "  window      " << windowText(process->settingsWindow()) << '\n'
       << "  shortcut    Fn+" << keyrow.settings().localToggleShortcut().displayName << '\n';
}

/// Opens the menu and leaves it open, so that something can be chosen.
void Prompt::printMenu() {
  auto* process = stage_->process();
  if (!process) {
    out_ << "  Keyrow is not running, so it has no menu.\n";
    return;
  }
  if (!process->statusItem().menu()) playLine("click right");
  if (const auto* menu = process->statusItem().menu()) out_ << drawMenu(*menu);
}

void Prompt::printSettings() {
  auto* process = stage_->process();
  if (!process || !process->settingsWindow().isVisible()) {
    out_ << "  The settings window is closed. Try: reopen keyrow\n";
    return;
  }
  out_ << drawSettings(process->simulatedPlatform());
}

void Prompt::printHardware() {
  const auto& mac = stage_->mac;
  out_ << "  HIDParameters                " << propertyText(mac.hid.parameters()) << '\n'
       << "  com.apple.keyboard.fnState   "
       << propertyText(mac.globalPreferences.value(GlobalPreferences::domain,
                                                   FnStateController::fnStateDefaultsKey))
       << '\n';
  for (const auto& [handle, count] : mac.openHandles.all()) {
    out_ << "  open                         " << count << " " << handle.first << '\n';
  }
}

void Prompt::printLog() {
  auto* process = stage_->process();
  if (process) {
    out_ << process->keyrow().diagnosticsLog().recentLogReport() << '\n';
  } else {
    out_ << "  Keyrow is not running, so it cannot read its log.\n";
  }
}

std::vector<std::string> Prompt::completions(std::string_view line) {
  const auto quote = line.find('"');
  const auto blank = line.rfind(' ');
  const auto start = quote != std::string_view::npos   ? quote
                     : blank != std::string_view::npos ? blank + 1
                                                       : 0;
  const auto typed = line.substr(start);
  const auto before = line.substr(0, start);

  std::set<std::string> words;
  if (before.empty()) {
    words.insert("expect");
    for (const auto& entry : promptWords) words.emplace(entry.words);
    for (const auto& part : language()) {
      for (const auto& word : part.actions) words.emplace(word.words);
    }
  } else if (before == "expect ") {
    words.insert("no");
    for (const auto& part : language()) {
      for (const auto& word : part.expectations) words.emplace(word.words);
    }
  } else {
    auto& mac = stage_->mac;
    for (const auto& app : mac.applications.installed()) words.insert(app);
    for (const auto& name : mac.keyboards.attachedNames()) words.insert(name);
    for (const auto* word : {"special", "standard", "none", "keyrow", "on"}) words.insert(word);
    for (const auto& call : portCalls) words.emplace(call.name);
    for (const auto key : settingsKey::all) words.emplace(key);
    if (auto* process = stage_->process()) {
      if (const auto* menu = process->statusItem().menu()) {
        for (const auto& item : *menu) {
          if (item.action != MenuAction::none) words.insert(sim::quoted(item.title));
        }
      }
      if (process->settingsWindow().isVisible()) {
        for (const auto& control : openControls(process->simulatedPlatform())) {
          words.insert(sim::quoted(control.title));
        }
      }
    }
  }
  std::vector<std::string> found;
  std::ranges::copy_if(words, std::back_inserter(found),
                       [&](const std::string& word) { return word.starts_with(typed); });
  return found;
}

}  // namespace keyrow::sim
