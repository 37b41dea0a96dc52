#include "reliability/Session.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/StateLogTexts.h"
#include "core/Words.h"
#include "reliability/ModelLines.h"
#include "reliability/StageChecks.h"
#include "reliability/StageSights.h"
#include "reliability/ToolResult.h"
#include "sim/machine/ModeWords.h"
#include "sim/ports/SimulatedMainRunLoop.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::reliability {

namespace {

/// Whether somebody else writes the stored modes.
bool isAnothersHand(const sim::Action& action) {
  const auto* write = std::get_if<sim::WriteDefaults>(&action);
  return std::holds_alternative<sim::AddOverride>(action) ||
         std::holds_alternative<sim::ManageSetting>(action) ||
         (write &&
          (write->key == settingsKey::globalFnState || write->key == settingsKey::localFnState));
}

/// Whether this application is meant: by its identifier, its name or its path.
bool isMeant(std::string_view word, std::string_view app) {
  const auto name = app.substr(app.rfind('.') + 1);
  return isSameWord(word, app) || isSameWord(word, name) ||
         word.ends_with(std::string{name} + ".app");
}

}  // namespace

Session::Session() {
  stage.mac.whenKeyrowQuits = [this](const std::string& user) {
    farewells_.push_back({user, modesOf(stage, user), user == stage.mac.sessions.active()});
  };
}

std::string Session::play(const std::string& line) {
  const auto step = sim::parseLine(line, 1);
  return step ? play(**step) : "the line cannot be parsed: " + line;
}

std::string Session::play(const sim::Step& step) {
  auto before = look();
  const auto user = stage.mac.sessions.active();
  farewells_.clear();
  const bool wasDisturbed = isDisturbed();
  if (const auto* action = step.action()) topRow_.look(*action);
  sim::Outcome outcome;
  bool isCutShort = false;
  try {
    outcome = sim::playStep(step, stage);
  } catch (const sim::ProcessEnded&) {
    isCutShort = true;
    stage.mac.scheduler.runReady();
  }

  const auto* action = step.action();
  if (!action || outcome.kind == sim::Outcome::Kind::endless) return outcome.message;
  const auto* run = std::get_if<sim::RunTool>(action);
  if (!isInBackground_) named_.clear();
  if (run) named_.insert(named_.end(), run->arguments.begin(), run->arguments.end());
  isInBackground_ |= run && run->isInBackground;
  if (run && outcome.kind == sim::Outcome::Kind::unmet) return outcome.message;
  // What is compared from now on is another user's.
  const bool isSwitchOfUsers = user != stage.mac.sessions.active();
  if (isSwitchOfUsers) {
    before = look();
    isHardwareOfOverride_ = false;
  }
  hasSwitchedUsers_ |= isSwitchOfUsers;
  const bool isCarriedOut = outcome.kind == sim::Outcome::Kind::done;
  const bool isWithoutEffect = !isCarriedOut && stage.recentTimeline().empty();
  std::string problem;
  if (isCutShort || wasDisturbed || isDisturbed() || (!isCarriedOut && !isWithoutEffect)) {
    loseTrack();
  } else if (isSwitchOfUsers) {
    changeUser(user, before);
  } else if (isCarriedOut) {
    problem = followChoice(*action, before);
  }
  for (auto other :
       {problem, wrongStorage(*action, before), wrongLoss(*action, before),
        run ? wrongResult(stage, *run) : "", wrongAdoption(*action, before), wrongImage(),
        wrongFarewell(before),
        tap_.problem(*action, {before.runningCount, before.isAsleep}, isCarriedOut),
        topRow_.problem(isCarriedOut && !isCutShort), keyPairs.takeProblem(), leaks(stage)}) {
    if (!other.empty()) return other;
  }
  return {};
}

std::string Session::end() {
  const bool isPromised = !isDisturbed();
  // One that hung while the users changed does not know whose the keyboard is.
  if (hasSwitchedUsers_ && stage.isAnyHanging()) return {};
  // A shortcut that is held would go on choosing.
  stage.mac.keyboardFilters.releaseAll();
  auto problem = tap_.problemOfComeback();
  if (!problem.empty()) return problem;
  // What was chosen while it did not run, it finds at the next launch.
  stage.mac.faults.clear();
  if (isPromised && model().chosen() && !stage.process()) stage.launchKeyrow();
  problem = problemAfterQuit(stage);
  if (problem.empty() && stage.mac.eventTaps.stalledCount() > 0) problem = "keys are stalled";
  if (!problem.empty() || !isPromised) return problem;
  for (const auto& [user, model] : models_) {
    if (model.chosen() && modesOf(stage, user).global != model.chosen()) {
      return "the chosen mode of " + user + " is lost at the end";
    }
  }
  return {};
}

Session::Before Session::look() {
  auto* process = stage.process();
  const auto seen = stage.storedFnStates().lastSeenPreference();
  const auto modes = actualModes();
  return {.modes = modes,
          .isPreferenceNews = modes.preference && (!seen || rawValue(*modes.preference) != *seen),
          .runningProcess = process ? std::optional{process->processID()} : std::nullopt,
          .runningCount = stage.runningCount(),
          .frontmost = stage.mac.applications.frontmost(),
          .writtenCount = stage.mac.hid.writtenCount(),
          .isAsleep = stage.mac.power.isAsleep(),
          .isContested = isContested(),
          .isMenuOpen = process && process->statusItem().menu()};
}

Modes Session::actualModes() {
  auto modes = modesOf(stage, stage.mac.sessions.active());
  auto* process = stage.process();
  if (!process) return modes;
  const auto& image = process->statusItem().image();
  if (image == "fn") modes.shown = FnState::standard;
  if (image == "globe") modes.shown = FnState::special;
  modes.isLocal = process->keyrow().modePolicy().isLocalScopeActive();
  return modes;
}

/// Whether something is going on in which no mode is promised: several instances, or one that
/// does not answer, in whichever session.
bool Session::isDisturbed() { return isModelLeftOut_ || isContested(); }
bool Session::isContested() { return stage.runningCount() > 1 || stage.isAnyHanging(); }

/// Everybody else's choices are what they were.
void Session::changeUser(const std::string& left, const Before& before) {
  auto& model = models_[left];
  if (isModelLeftOut_ || stage.runningCount(left) == 0 || !canLook(before)) {
    model.loseTrack();
  } else {
    model.look(modesOf(stage, left).preference);
  }
  // The keyboard may be the other one's for a second.
  models_[stage.mac.sessions.active()].miss();
}

void Session::loseTrack() {
  for (auto& [user, model] : models_) model.loseTrack();
}

/// Tells the model what was chosen in a line, and gives what is wrong then.
std::string Session::followChoice(const sim::Action& action, const Before& before) {
  const auto meaning = happen(action, model());
  // A choice that cannot be stored, be read, or be reported, is nobody's promise.
  const bool isManaged = stage.storedFnStates().isGlobalManaged();
  const bool isUntold = hasFailed(stage, sim::PortCall::writeOutput);
  if (isManaged || isUntold || hasFailed(stage, sim::PortCall::writeDefaults)) model().loseTrack();
  if (model().isUnseen() && !canNotice()) model().forget();
  if (hasFailed(stage, sim::PortCall::synchronizePreferences)) isModelLeftOut_ = true;

  const auto* run = std::get_if<sim::RunTool>(&action);
  if (run && !before.runningProcess) return wrongStore(*run, before);
  auto problem = wrongCommand(action);
  const bool isCommand = stage.hasLogged(stateLogText::setGlobal) ||
                         stage.hasLogged(stateLogText::setOverride) ||
                         stage.hasLogged(stateLogText::clearedOverride);
  const bool isSwitch = stage.mac.applications.frontmost() != before.frontmost;
  const bool isIgnored = before.isMenuOpen && std::holds_alternative<sim::UseVoiceOver>(action);
  const bool isMeant = meaning.isNoticed && !isIgnored;
  const bool isNoticed = stage.process() ? isMeant || isCommand || isSwitch || isAnswered(action)
                                         : std::ranges::any_of(farewells_, &Farewell::isInFront);
  if (isNoticed && canLook(before)) model().look(actualModes().preference);
  if ((isNoticed && !canLook(before)) || (run && !isAnswered(action))) model().miss();
  return problem.empty() ? wrongMode(meaning.isApplied) : problem;
}

/// Whether Keyrow could see keyboard and preference in this line, and remember that.
bool Session::canLook(const Before& before) {
  return before.modes.hardware && !hasFailed(stage, sim::PortCall::findService) &&
         !hasFailed(stage, sim::PortCall::readServiceProperty) &&
         !hasFailed(stage, sim::PortCall::copyPreference) &&
         !hasFailed(stage, sim::PortCall::synchronizePreferences) &&
         !hasFailed(stage, sim::PortCall::writeDefaults);
}

/// Whether a choice in System Settings can still be found after this line.
bool Session::canNotice() {
  const auto now = actualModes();
  const bool isOverwritten = now.hardware != model().chosen() || now.preference != model().chosen();
  return !hasFailed(stage, sim::PortCall::readServiceProperty) &&
         !hasFailed(stage, sim::PortCall::copyPreference) &&
         !hasFailed(stage, sim::PortCall::synchronizePreferences) &&
         !(isOverwritten && hasFailed(stage, sim::PortCall::findService));
}

/// Takes note of a global mode that was set with Keyrow. Whoever flips the mode gets the other
/// one.
std::string Session::wrongCommand(const sim::Action& action) {
  std::vector<FnState> set;
  for (const auto& entry : stage.recentLog()) {
    if (!entry.message.starts_with(stateLogText::setGlobal)) continue;
    const auto mode = std::string_view{entry.message}.substr(stateLogText::setGlobal.size());
    set.push_back(mode.starts_with(modeText(FnState::standard)) ? FnState::standard
                                                                : FnState::special);
  }
  if (set.empty()) return {};
  const bool isFlip =
      std::holds_alternative<sim::ClickItem>(action) || std::holds_alternative<sim::Press>(action);
  const auto before = model().chosen();
  model().chooseWithKeyrow(set.back());
  // What the preference held before can still be found, and nobody can tell that it is older.
  const bool isPreferenceHidden = hasFailed(stage, sim::PortCall::copyPreference);
  if (isPreferenceHidden || hasFailed(stage, sim::PortCall::writeDefaults)) model().forget();
  // Where the hardware could not be read, a choice made elsewhere was not seen.
  const bool mustDiffer = isFlip && set.size() == 1 && !hasAnyFault(stage);
  return mustDiffer && before == set.back() ? "a flip has changed nothing" : "";
}

/// Whether Keyrow has answered what the command asked it about modes, and so has looked at them.
bool Session::isAnswered(const sim::Action& action) {
  const auto* run = std::get_if<sim::RunTool>(&action);
  if (!run || run->arguments.empty() || stage.toolExitStatus() != 0) return false;
  const auto& first = run->arguments.front();
  return first != "settings" && first != "watch";
}

/// Without a Keyrow the command stores what is to hold, and takes note of the preference.
std::string Session::wrongStore(const sim::RunTool& run, const Before& before) {
  const bool isMode = run.arguments.size() == 2 && run.arguments.front() == "mode";
  if (!isMode || stage.toolExitStatus() != 0) return {};
  const auto now = actualModes().global;
  if (!now) return "the command has stored no mode";
  const auto named = sim::modeOfWord(run.arguments.back());
  const auto chosen = model().chosen();
  const auto flipped = chosen ? std::optional{otherFnState(*chosen)} : now;
  const bool isWanted = now == (named ? named : flipped) || hasAnyFault(stage);
  model().chooseWithKeyrow(*now);
  if (canLook(before)) {
    model().look(actualModes().preference);
  } else {
    model().loseTrack();
  }
  return isWanted ? "" : "the command has stored another mode";
}

std::string Session::wrongMode(bool isApplied) {
  const auto chosen = model().chosen();
  if (!chosen || model().isUnseen()) return {};
  ++promisedCount_;
  const auto now = actualModes();
  if (now.global != chosen) {
    return "the chosen mode is " + sim::modeWord(chosen) + ", but there is: " + text(now);
  }
  if (!isApplied || !stage.process() || hasAnyFault(stage)) return {};
  const auto& frontmost = stage.mac.applications.frontmost();
  const auto local = frontmost ? stage.storedFnStates().local(*frontmost) : std::nullopt;
  if (now.hardware == (local ? local : chosen)) return {};
  return "the keyboard is not in the mode of the application in front: " + text(now);
}

std::string Session::wrongStorage(const sim::Action& action, const Before& before) {
  hasFailedToSynchronize_ |= hasFailed(stage, sim::PortCall::synchronizePreferences);
  if (isAnothersHand(action)) return {};
  const auto now = actualModes();
  const auto written = stage.mac.hid.writtenValues(before.writtenCount);
  const auto wasWritten = [&](FnState mode) {
    return std::ranges::find(written, PropertyValue{rawValue(mode)}) != written.end();
  };
  for (const auto& [app, mode] : now.overrides) {
    const auto found = before.modes.overrides.find(app);
    if (found != before.modes.overrides.end() && found->second == mode) continue;
    if (isNamed(app)) continue;
    if (!wasWritten(mode)) return "an override was stored for " + app + " that was never written";
  }
  if (!now.global || now.global == before.modes.global || wasWritten(*now.global)) return {};
  // Without a Keyrow it is for later.
  if (std::holds_alternative<sim::RunTool>(action) && !before.runningProcess) return {};
  // What is adopted was there: in the keyboard, or in the system preference. Where that could
  // not be synchronized, a process sees what it last set or read there, however old.
  if (hasFailedToSynchronize_) return {};
  for (const auto& seen : {before.modes.hardware, now.hardware, before.modes.preference}) {
    if (seen == now.global) return {};
  }
  return "a global mode was stored that was never there";
}

std::string Session::wrongLoss(const sim::Action& action, const Before& before) {
  if (isAnothersHand(action) || stage.hasLogged(stateLogText::clearedOverride)) return {};
  // To Keyrow it looks as if the application had been removed.
  if (hasFailed(stage, sim::PortCall::findApplication)) return {};
  const auto now = actualModes();
  for (const auto& [app, mode] : before.modes.overrides) {
    if (isNamed(app)) continue;
    if (!now.overrides.contains(app) && stage.mac.applications.isInstalled(app)) {
      return "the override of " + app + " is lost";
    }
  }
  return {};
}

/// Whether Keyrow is told to change or to forget this application's override, which need not be in
/// front.
bool Session::isNamed(std::string_view app) const {
  return std::ranges::any_of(named_, [app](const auto& word) { return isMeant(word, app); });
}

/// Whoever changes the mode by hand takes it from the override, and what the preference says
/// that Keyrow has not seen there is no override's; whatever
/// Keyrow writes that is not the global mode is an override's. Of two instances, one that hung
/// cannot know what the other one wrote meanwhile.
std::string Session::wrongAdoption(const sim::Action& action, const Before& before) {
  const auto written = stage.mac.hid.writtenValues(before.writtenCount);
  const auto global = actualModes().global;
  // Where no global mode is stored, a new Keyrow begins with what it finds.
  if (std::holds_alternative<sim::Launch>(action) && !global) isHardwareOfOverride_ = false;
  const bool wasOfOverride = isHardwareOfOverride_;
  if (std::holds_alternative<sim::ChangeInSystemSettings>(action) ||
      std::holds_alternative<sim::ChangeHardware>(action)) {
    isHardwareOfOverride_ = false;
  } else if (!written.empty()) {
    // Where nothing is stored, what was written was meant for all applications, unless the one
    // in front has an override.
    const auto& frontmost = stage.mac.applications.frontmost();
    const bool hasOverride = frontmost && stage.storedFnStates().local(*frontmost);
    isHardwareOfOverride_ =
        !before.isContested && !isContested() && !hasFailed(stage, sim::PortCall::writeDefaults) &&
        (global ? written.back() != PropertyValue{rawValue(*global)} : hasOverride);
  }
  // What was chosen for all applications in the same line is not the override any more.
  const auto log = stage.recentLog();
  const auto told = std::ranges::find_if(log, [](const LogEntry& entry) {
    return entry.message.starts_with(stateLogText::synchronizedGlobal) ||
           entry.message.starts_with(stateLogText::setGlobal);
  });
  const bool isAdopted =
      told != log.end() && told->message.starts_with(stateLogText::synchronizedGlobal);
  return isAdopted && wasOfOverride && !before.isPreferenceNews && global == before.modes.hardware
             ? "an override became the global mode"
             : "";
}

std::string Session::wrongImage() {
  auto* process = stage.process();
  if (!process || !process->statusItem().exists()) return {};
  const auto known = process->keyrow().modePolicy().lastKnownFnState();
  if (!known || actualModes().shown == known) return {};
  return "the status item does not show what was last written or read";
}

std::string Session::wrongFarewell(const Before& before) {
  for (const auto& left : farewells_) {
    // A newer one has gone on without it, and has promised the same.
    if (before.isContested && stage.runningCount(left.user) > 0) continue;
    auto problem = wrongState(
        left.modes, /*hasKeyboard=*/left.isInFront && !(hasSwitchedUsers_ && before.isContested));
    if (!problem.empty()) return problem;
  }
  const bool fellAsleep = stage.mac.power.isAsleep() && !before.isAsleep;
  auto* process = stage.process();
  const bool isAlone = before.runningCount == 1 && process && !process->isHanging();
  return fellAsleep && isAlone ? wrongState(actualModes(), /*hasKeyboard=*/false) : "";
}

/// What is wrong with what a Keyrow left behind that has gone, or has fallen asleep.
std::string Session::wrongState(const Modes& left, bool hasKeyboard) {
  if (!left.global) return {};
  const bool mayPreferenceDiffer = stage.hasLogged(stateLogText::failedToSynchronizePreference) ||
                                   stage.hasLogged(stateLogText::failedToReadBeforePersisting);
  if (left.preference != left.global && !mayPreferenceDiffer) {
    return "the system preference is not the global mode";
  }
  const bool mayHardwareDiffer = stage.hasLogged(stateLogText::failedToRestoreGlobal) ||
                                 stage.hasLogged(stateLogText::cannotRestoreGlobal);
  if (hasKeyboard && left.hardware != left.global && !mayHardwareDiffer) {
    return "the keyboard is not in the global mode";
  }
  return {};
}

}  // namespace keyrow::reliability
