#include "tool/Tool.h"

#include <algorithm>
#include <utility>

#include "core/AppIdentifier.h"
#include "core/LogText.h"
#include "core/StoredBefore.h"
#include "core/Words.h"
#include "tool/Doctor.h"
#include "tool/Meaning.h"

namespace keyrow::tool {

namespace {

using namespace std::chrono_literals;
using Command = Arguments::Command;

constexpr auto watchInterval = 1s;
constexpr int looksPerRenewal = 5;

constexpr std::string_view noAnswer = "Keyrow does not answer.";
constexpr std::string_view noEnd = "Keyrow has begun, and does not come to an end.";

}  // namespace

Tool::Tool(Uses uses)
    : use_{std::move(uses)},
      stateLog_{use_.systemLog.makeLogger(appIdentifier, "state")},
      storedFnStates_{use_.userDefaults},
      fnStateController_{{.hidSystem = use_.hidSystem,
                          .globalPreferences = use_.globalPreferences,
                          .storedFnStates = storedFnStates_,
                          .stateLog = *stateLog_}},
      evidence_{fnStateController_, storedFnStates_},
      storedModes_{fnStateController_, storedFnStates_, evidence_},
      settings_{{.userDefaults = use_.userDefaults,
                 .notificationCenter = use_.notificationCenter,
                 .text = use_.text}},
      keyboardFnStates_{use_.userDefaults},
      namedSettings_{{.settings = settings_,
                      .bundle = use_.bundle,
                      .notificationCenter = use_.notificationCenter,
                      .userDefaults = use_.userDefaults}},
      commands_{{.modes = storedModes_,
                 .keyboardFnStates = keyboardFnStates_,
                 .namedSettings = namedSettings_,
                 .workspace = use_.workspace}},
      keyrow_{{.clock = use_.clock,
               .distributedNotificationCenter = use_.distributedNotificationCenter,
               .mainQueue = use_.mainQueue,
               .process = use_.process,
               .workspace = use_.workspace}} {}

void Tool::run(const std::vector<std::string>& words) {
  // The settings of root are nobody's.
  if (use_.process.isRoot()) return fail("keyrow belongs to a user, and does not run as root.");
  const auto arguments = parse(words);
  if (!arguments) {
    complain(arguments.error());
    for (const auto& line : usage()) use_.terminal.printError(line);
    return finish(exitStatus::usage);
  }
  perform(*arguments);
}

void Tool::perform(const Arguments& arguments) {
  switch (arguments.command) {
    case Command::help:
      printLines(usage());
      return succeed();
    case Command::version: {
      const auto version = use_.bundle.infoValue("CFBundleShortVersionString");
      const auto* text = version ? version->string() : nullptr;
      if (!text)
        return fail("The version cannot be read: this command does not lie in Keyrow.app.");
      print("Keyrow " + *text);
      return succeed();
    }
    case Command::status:
      return showStatus(arguments.isJson);
    case Command::showMode:
      return showMode();
    case Command::setMode:
      return change(Request::Kind::setMode, {}, arguments.value);
    case Command::toggleMode:
      return change(Request::Kind::toggleMode, {}, {});
    case Command::listOverrides:
      return withStatus([this](const Status& status) {
        printLines(overrideLines(status));
        succeed();
      });
    case Command::setOverride:
    case Command::clearOverride:
      return changeOverride(arguments);
    case Command::listKeyboards:
      return withStatus([this](const Status& status) {
        printLines(keyboardLines(status));
        if (!knowsKeyboards(status)) complain("Only stored modes are known.");
        succeed();
      });
    case Command::setKeyboard:
      return changeKeyboard(arguments);
    case Command::listSettings:
      return showSettings();
    case Command::showSetting:
      return showSetting(arguments.subject);
    case Command::setSetting:
      return changeSetting(arguments);
    case Command::watch:
      return watch(arguments.isJson);
    case Command::doctor:
      return showDiagnosis();
  }
}

// What only looks.

void Tool::showStatus(bool isJson) {
  withStatus([this, isJson](const Status& status) {
    for (const auto& line : statusLines(status, isJson)) printAsItIs(line);
    succeed();
  });
}

std::vector<std::string> Tool::statusLines(const Status& status, bool isJson) {
  const auto surroundings = this->surroundings();
  if (isJson) return {jsonText(status, surroundings)};
  return factLines(facts(status, surroundings));
}

/// As the terminal shows them.
std::vector<std::string> Tool::factLines(const std::vector<Fact>& facts) {
  const bool isInteractive = use_.terminal.isInteractive();
  constexpr std::string_view bold = "\033[1m";
  constexpr std::string_view plain = "\033[0m";
  std::vector<std::string> lines;
  lines.reserve(facts.size());
  for (const auto& [what, how] : facts) {
    std::string line{isInteractive ? bold : ""};
    line += what;
    if (isInteractive) line += plain;
    line += ": ";
    line += inOneLine(how);
    lines.push_back(std::move(line));
  }
  return lines;
}

void Tool::showMode() {
  withStatus([this](const Status& status) {
    if (!status.global) return fail("No global mode is stored.");
    print(std::string{wordOf(*status.global)});
    succeed();
  });
}

void Tool::showSettings() {
  for (const auto& name : NamedSettings::names()) {
    print(name + ": " + namedSettings_.value(name).value_or(""));
  }
  succeed();
}

void Tool::showSetting(const std::string& name) {
  const auto value = namedSettings_.value(name);
  if (!value) return fail(unknownWord("setting", name, NamedSettings::names()), exitStatus::usage);
  print(*value);
  succeed();
}

void Tool::showDiagnosis() {
  withStatus([this](const Status& status) {
    Findings findings{.processes = keyrow_.processes()};
    for (const auto key : settingsKey::all) {
      const bool isNote = key == settingsKey::lastSeenFnStatePreference ||
                          key == settingsKey::hasPromptedAccessibility;
      if (!isNote && use_.userDefaults.isManaged(key)) findings.managedKeys.emplace_back(key);
    }
    printLines(diagnose(status, surroundings(), findings));
    succeed();
  });
}

// What changes something.

void Tool::changeOverride(const Arguments& arguments) {
  const bool clears = arguments.command == Command::clearOverride;
  // What is gone can still lose its override.
  const auto stored =
      clears ? storedFnStates_.localBundleIdentifiers() : std::vector<std::string>{};
  const auto application = applicationMeant(arguments.subject, stored, use_.workspace);
  if (!application) return fail(application.error());
  change(clears ? Request::Kind::clearOverride : Request::Kind::setOverride, *application,
         arguments.value);
}

void Tool::changeKeyboard(const Arguments& arguments) {
  const auto changeIt = [this, arguments](const Status& status) {
    const bool isToFollow = arguments.value == Commands::follow;
    const auto numbers = keyboardMeant(arguments.subject, isToFollow, status);
    if (!numbers) return fail(numbers.error());
    change(Request::Kind::setKeyboard, *numbers, arguments.value);
  };
  if (!keyrow_.isRunning()) return changeIt(ownStatus());
  keyrow_.ask(Request::Kind::status, {}, {}, [this, changeIt](const std::optional<Answer>& answer) {
    if (!answer || !answer->status) return fail(std::string{noAnswer});
    changeIt(statusFrom(*answer->status));
  });
}

void Tool::changeSetting(const Arguments& arguments) {
  // What is wrong with what was typed concerns nobody else.
  const auto& name = arguments.subject;
  if (const auto problem = namedSettings_.problem(name, arguments.value)) {
    return fail(*problem,
                namedSettings_.isManaged(name) ? exitStatus::couldNot : exitStatus::usage);
  }
  change(Request::Kind::setSetting, name, arguments.value);
}

void Tool::change(Request::Kind kind, const std::string& subject, const std::string& value) {
  if (!keyrow_.isRunning()) return store(kind, subject, value);
  keyrow_.ask(kind, subject, value, [this, kind, subject](const std::optional<Answer>& answer) {
    if (!answer) return fail(std::string{noAnswer});
    if (answer->problem) return fail(*answer->problem);
    if (!answer->status) return fail(std::string{noEnd});
    tellResult(kind, subject, statusFrom(*answer->status));
    succeed();
  });
}

/// For the next launch of Keyrow: whole, or not at all.
void Tool::store(Request::Kind kind, const std::string& subject, const std::string& value) {
  const StoredBefore before{use_.userDefaults, settingsKey::all};
  auto problem =
      commands_.carryOut({.number = {}, .kind = kind, .subject = subject, .value = value});
  if (!problem && !use_.userDefaults.synchronize()) problem = "It could not be stored.";
  if (problem) {
    // What was written may get there all the same, and so has what was there before to follow it.
    before.putBack();
    use_.userDefaults.synchronize();
    return fail(*problem);
  }
  tellResult(kind, subject, ownStatus());
  print("Keyrow does not run: this applies at its next launch.");
  succeed();
}

void Tool::tellResult(Request::Kind kind, const std::string& subject, const Status& status) {
  switch (kind) {
    case Request::Kind::setMode:
    case Request::Kind::toggleMode:
      if (status.global) print("The global mode is " + std::string{wordOf(*status.global)} + ".");
      return;
    case Request::Kind::setOverride:
    case Request::Kind::clearOverride: {
      const auto found = status.overrides.find(subject);
      return print(subject + (found == status.overrides.end()
                                  ? " has no override."
                                  : ": " + std::string{wordOf(found->second)} + "."));
    }
    case Request::Kind::setKeyboard: {
      const auto found = status.keyboardModes.find(subject);
      print(subject + (found == status.keyboardModes.end()
                           ? " follows the mode in force."
                           : ": " + std::string{wordOf(found->second)} + "."));
      if (!status.translatesTopRows) {
        print("This has no effect until applyFnModeToExternalFunctionKeys is on.");
      }
      return;
    }
    case Request::Kind::setSetting: {
      const auto found = status.settings.find(subject);
      return print(subject + ": " + (found == status.settings.end() ? "" : found->second));
    }
    case Request::Kind::status:
    case Request::Kind::watch:
      return;
  }
}

// Watching.

void Tool::watch(bool isJson) {
  isWatchingInJson_ = isJson;
  changeObserver_ = use_.distributedNotificationCenter.addObserver(
      requestNotification::change, std::string{appIdentifier},
      [this](const std::optional<PropertyDictionary>& userInfo) {
        if (userInfo) tell(statusFrom(*userInfo));
      });
  lookAgain();
}

/// Looks at what Keyrow does not announce, and asks it to go on announcing the rest.
void Tool::lookAgain() {
  nextLook_ = use_.mainQueue.after(watchInterval, [this] { lookAgain(); });
  const auto processes = keyrow_.processes();
  const bool isToldOneThere =
      told_ && told_->running &&
      std::ranges::find(processes, told_->running->processIdentifier) != processes.end();
  // Secure input is nothing that Keyrow would announce.
  if (isToldOneThere) {
    tell(Status{*told_});
  } else if (told_ || processes.empty()) {
    tell(ownStatus());
  }
  if (processes.empty() || keyrow_.isAsked()) return;
  if (isToldOneThere && ++looksSinceRenewal_ < looksPerRenewal) return;
  looksSinceRenewal_ = 0;
  keyrow_.ask(Request::Kind::watch, {}, {}, [this](const std::optional<Answer>& answer) {
    tell(answer && answer->status ? statusFrom(*answer->status) : ownStatus());
  });
}

/// Prints what is different from what was printed before.
void Tool::tell(const Status& status) {
  told_ = status;
  auto lines = statusLines(status, isWatchingInJson_);
  if (!isWatchingInJson_) {
    for (auto& line : factLines(settingFacts(status))) lines.push_back(std::move(line));
  }
  for (const auto& line : lines) {
    if (std::ranges::find(toldLines_, line) == toldLines_.end()) printAsItIs(line);
  }
  toldLines_ = std::move(lines);
}

// How things stand.

/// Where Keyrow does not answer, says so, and goes on with what can be known without it.
void Tool::withStatus(std::function<void(const Status& status)> handler) {
  if (!keyrow_.isRunning()) return handler(ownStatus());
  keyrow_.ask(Request::Kind::status, {}, {},
              [this, handler = std::move(handler)](const std::optional<Answer>& answer) {
                if (answer && answer->status) return handler(statusFrom(*answer->status));
                complain(std::string{noAnswer});
                outcome_ = exitStatus::couldNot;
                handler(ownStatus());
              });
}

/// What can be known without Keyrow.
Status Tool::ownStatus() {
  auto status = storedStatus(storedFnStates_, keyboardFnStates_, settings_, namedSettings_);
  status.global = storedModes_.globalMode();
  status.application = use_.workspace.frontmostBundleIdentifier();
  const auto mode = fnStateController_.readFnState();
  if (mode) status.mode = *mode;
  return status;
}

Surroundings Tool::surroundings() {
  Surroundings surroundings{.isKeyrowRunning = keyrow_.isRunning(),
                            .isKeyrowSilent = keyrow_.isSilent()};
  if (!use_.secureInput.isEnabled()) return surroundings;
  surroundings.isSecureInputOn = true;
  surroundings.secureInputHolder = use_.secureInput.holder();
  return surroundings;
}

// The terminal.

/// What others have named could move its cursor.
void Tool::print(const std::string& line) { printAsItIs(inOneLine(line)); }

void Tool::printAsItIs(const std::string& line) {
  if (hasFinished_ || use_.terminal.print(line)) return;
  fail("The output cannot be written.");
}

void Tool::printLines(const std::vector<std::string>& lines) {
  for (const auto& line : lines) print(line);
}

void Tool::complain(const std::string& problem) {
  use_.terminal.printError("keyrow: " + inOneLine(problem));
}

void Tool::succeed() { finish(outcome_); }

void Tool::fail(const std::string& problem, int status) {
  complain(problem);
  finish(status);
}

void Tool::finish(int status) {
  if (std::exchange(hasFinished_, true)) return;
  use_.finished(status);
}

}  // namespace keyrow::tool
