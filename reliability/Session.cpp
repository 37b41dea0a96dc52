#include "reliability/Session.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "core/StateLogTexts.h"
#include "input/InputLogTexts.h"
#include "reliability/ModelLines.h"
#include "reliability/StageChecks.h"
#include "sim/machine/ModeWords.h"
#include "sim/ports/SimulatedMainRunLoop.h"
#include "sim/scenario/EventPattern.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"
#include "ui/FnReplacementMenu.h"

namespace keyrow::reliability {

namespace {

/// Whether somebody else writes the stored modes.
bool isAnothersHand(const sim::Action& action) {
  const auto* write = std::get_if<sim::WriteDefaults>(&action);
  return std::holds_alternative<sim::AddOverride>(action) ||
         (write &&
          (write->key == settingsKey::globalFnState || write->key == settingsKey::localFnState));
}

}  // namespace

Session::Session() {
  model_.installed = {"com.apple.finder", "com.apple.systempreferences",
                      "com.apple.SystemSettings"};
  model_.state = actualState();
  stage.mac.whenKeyrowQuits = [this] { farewells_.push_back(actualState()); };
}

std::string Session::play(const std::string& line) {
  const auto step = sim::parseLine(line, 1);
  return step ? play(**step) : "the line cannot be parsed: " + line;
}

std::string Session::play(const sim::Step& step) {
  const auto before = look();
  farewells_.clear();
  const bool wasDisturbed = isDisturbed();
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
  if (outcome.kind != sim::Outcome::Kind::done && !stage.recentTimeline().empty()) {
    // Though something about it was wrong, it was carried out.
    adoptActual(/*isSwitch=*/false);
  } else if (outcome.kind == sim::Outcome::Kind::done) {
    const bool isKnown = !isCutShort && tellModel(*action, before) && followFrontmost();
    const bool isDisturbedNow = wasDisturbed || isDisturbed();
    if (!isKnown || isDisturbedNow) {
      adoptActual(/*isSwitch=*/std::holds_alternative<sim::Front>(*action) && !isDisturbedNow);
    } else {
      ++comparedCount_;
    }
  }
  // A write that worked leaves no doubt.
  if (!isDisturbed() && stage.mac.hid.writtenCount() > before.writtenCount && !hasFailedToWrite()) {
    isWriteUncertain_ = false;
  }
  for (auto problem :
       {compareWithModel(), wrongStorage(*action, before), wrongLoss(*action, before),
        wrongAdoption(*action, before), wrongImage(), wrongFarewell(before),
        wrongTap(*action, before, outcome.kind == sim::Outcome::Kind::done), keyPairs.takeProblem(),
        leaks(stage)}) {
    if (!problem.empty()) return problem;
  }
  return {};
}

std::string Session::end() {
  auto problem = wrongComeback();
  if (problem.empty()) problem = problemAfterQuit(stage);
  if (problem.empty() && stage.mac.eventTaps.stalledCount() > 0) problem = "keys are stalled";
  return problem;
}

Session::Before Session::look() {
  auto* process = stage.process();
  return {
      .state = actualState(),
      .runningProcess = process ? std::optional{process->processID()} : std::nullopt,
      .runningCount = stage.runningCount(),
      .shortcutTitle =
          process ? process->simulatedPlatform().general.localShortcutTitle : std::string{},
      .writtenCount = stage.mac.hid.writtenCount(),
      .isAnythingHeld = stage.mac.keyboardFilters.isAnythingDown(),
      .isTapWorking = stage.mac.eventTaps.state() == "working" && stage.mac.isAccessibilityGranted,
      .isAsleep = stage.mac.power.isAsleep()};
}

ModeModel::State Session::actualState() {
  ModeModel::State state;
  state.hardware = sim::modeOfWord(stage.mac.hid.modeName());
  const auto preference = stage.mac.globalPreferences.value(GlobalPreferences::domain,
                                                            FnStateController::fnStateDefaultsKey);
  const auto isStandard = preference ? preference->boolValue() : std::nullopt;
  if (isStandard) state.preference = fnStateFromPreference(*isStandard);
  const auto stored = stage.storedFnStates();
  state.global = stored.global();
  for (const auto& app : stored.localBundleIdentifiers()) {
    if (const auto mode = stored.local(app)) state.overrides[app] = *mode;
  }
  if (auto* process = stage.process()) {
    const auto& image = process->statusItem().image();
    if (image == "fn") state.shown = FnState::standard;
    if (image == "globe") state.shown = FnState::special;
    state.isLocal = process->keyrow().modePolicy().isLocalScopeActive();
  }
  return state;
}

/// Whether something is going on that the model knows nothing of.
bool Session::isDisturbed() {
  auto* process = stage.process();
  return isModelLeftOut_ || hasUnknownFault_ || stage.runningCount() > 1 ||
         (process && process->isHanging());
}

bool Session::tellModel(const sim::Action& action, const Before& before) {
  if (std::holds_alternative<sim::Repair>(action)) hasUnknownFault_ = false;
  if (const auto* fail = std::get_if<sim::Fail>(&action); fail && !isKnownFault(*fail)) {
    hasUnknownFault_ = true;
    // What was not synchronized comes later, even after a repair.
    if (fail->call == sim::PortCall::synchronizePreferences) isModelLeftOut_ = true;
    return false;
  }
  if (const auto* takeover = std::get_if<sim::PostTakeover>(&action)) {
    if (before.runningProcess && takeover->isMeantFor(*before.runningProcess)) model_.quit();
    return true;
  }
  if (givesKeysAnotherMeaning(action, before)) areKeysUncertain_ = true;
  if (const auto* press = std::get_if<sim::Press>(&action)) {
    if (areKeysUncertain_) return false;
    const bool isShortcut = isGlobalShortcut(press->keys) || isLocalShortcut(press->keys);
    if (isShortcut && (!before.isTapWorking || isHidden(press->keys) || !model_.isRunning)) {
      return true;
    }
  }
  if (std::holds_alternative<sim::Front>(action) && !canFollowSwitch()) return false;
  // Whoever cannot read now tries again later.
  const bool canRead = model_.canRead && model_.state.hardware;
  if (std::holds_alternative<sim::Launch>(action)) {
    isShownUncertain_ = !canRead;
    isPreviousUncertain_ = false;
  } else if (!canRead) {
    isShownUncertain_ = true;
  }
  // What held keys do while others are pressed, or time passes, is not for the model to say.
  return happen(action, model_) && !before.isAnythingHeld;
}

/// Whether some other program keeps these keys to itself.
bool Session::isHidden(const sim::Keys& keys) {
  const auto keyboard = keys.keyboard ? stage.mac.keyboards.find(*keys.keyboard) : nullptr;
  return stage.mac.isSecureInputOn() || (keyboard && keyboard->isExclusive);
}

/// Whether keys are held from now on, or another key is or may become a shortcut.
bool Session::givesKeysAnotherMeaning(const sim::Action& action, const Before& before) {
  if (std::holds_alternative<sim::HoldDown>(action)) return true;
  if (const auto* click = std::get_if<sim::ClickControl>(&action)) {
    return click->title == before.shortcutTitle;
  }
  if (const auto* choose = std::get_if<sim::Choose>(&action)) {
    return std::ranges::find(fnReplacementItems(), choose->title, &FnReplacementItem::title) !=
           fnReplacementItems().end();
  }
  const auto* write = std::get_if<sim::WriteDefaults>(&action);
  return write && (write->key == settingsKey::fnReplacementModifier ||
                   write->key == settingsKey::localToggleShortcutKeyCode);
}

/// Keyrow comes to the front when it shows its window; false when the model cannot follow.
bool Session::followFrontmost() {
  const auto& frontmost = stage.mac.applications.frontmost();
  if (frontmost == model_.frontmost) return true;
  if (!canFollowSwitch()) return false;
  model_.switchTo(frontmost);
  return true;
}

/// What an application switch does depends on the application before, and on what Keyrow has
/// seen last in the hardware, where that may be something that it has left there.
bool Session::canFollowSwitch() const {
  const bool mayBeLeftover =
      model_.hasFailedToWrite || (model_.state.isLocal && model_.wasInSystemSettings());
  return !isPreviousUncertain_ && !isWriteUncertain_ && !(isShownUncertain_ && mayBeLeftover);
}

/// The model cannot tell, so it goes on from what there is. A switch tells Keyrow which
/// application is the previous one.
void Session::adoptActual(bool isSwitch) {
  model_.state = actualState();
  auto* process = stage.process();
  model_.isRunning = process != nullptr;
  model_.hasFailedToWrite = false;
  isWriteUncertain_ = true;
  model_.frontmost = stage.mac.applications.frontmost();
  model_.previous = model_.frontmost;
  isPreviousUncertain_ = !isSwitch;
  isShownUncertain_ = true;
}

std::string Session::compareWithModel() {
  auto actual = actualState();
  auto expected = model_.state;
  if (isShownUncertain_) actual.shown = expected.shown;
  if (actual == expected) return {};
  return "there is: " + text(actual) + "; there should be: " + text(expected);
}

std::string Session::wrongStorage(const sim::Action& action, const Before& before) {
  hasFailedToSynchronize_ |= hasFailed(sim::PortCall::synchronizePreferences);
  if (isAnothersHand(action)) return {};
  const auto now = actualState();
  const auto written = stage.mac.hid.writtenValues(before.writtenCount);
  const auto wasWritten = [&](FnState mode) {
    return std::ranges::find(written, PropertyValue{rawValue(mode)}) != written.end();
  };
  for (const auto& [app, mode] : now.overrides) {
    const auto found = before.state.overrides.find(app);
    if (found != before.state.overrides.end() && found->second == mode) continue;
    if (!wasWritten(mode)) return "an override was stored for " + app + " that was never written";
  }
  if (!now.global || now.global == before.state.global || wasWritten(*now.global)) return {};
  // What is adopted was there: in the keyboard, or in the system preference. Where that could
  // not be synchronized, a process sees what it last set or read there, however old.
  if (hasFailedToSynchronize_) return {};
  for (const auto& seen : {before.state.hardware, now.hardware, before.state.preference}) {
    if (seen == now.global) return {};
  }
  return "a global mode was stored that was never there";
}

std::string Session::wrongLoss(const sim::Action& action, const Before& before) {
  if (isAnothersHand(action) || hasLogged(stateLogText::clearedOverride)) return {};
  // To Keyrow it looks as if the application had been removed.
  if (hasFailed(sim::PortCall::findApplication)) return {};
  const auto now = actualState();
  for (const auto& [app, mode] : before.state.overrides) {
    if (!now.overrides.contains(app) && stage.mac.applications.isInstalled(app)) {
      return "the override of " + app + " is lost";
    }
  }
  return {};
}

/// Whoever changes the mode by hand takes it from the override; whatever Keyrow writes that
/// is not the global mode is an override's. Of two instances, one that hung cannot know what
/// the other one wrote meanwhile.
std::string Session::wrongAdoption(const sim::Action& action, const Before& before) {
  const bool wasOfOverride = isHardwareOfOverride_;
  const auto written = stage.mac.hid.writtenValues(before.writtenCount);
  const auto global = actualState().global;
  if (std::holds_alternative<sim::ChangeInSystemSettings>(action) ||
      std::holds_alternative<sim::ChangeHardware>(action)) {
    isHardwareOfOverride_ = false;
  } else if (!written.empty()) {
    // Where nothing is stored, what was written was meant for all applications, unless the one
    // in front has an override.
    const auto& frontmost = stage.mac.applications.frontmost();
    const bool hasOverride = frontmost && stage.storedFnStates().local(*frontmost);
    isHardwareOfOverride_ =
        before.runningCount <= 1 && !hasFailed(sim::PortCall::writeDefaults) &&
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
  return isAdopted && wasOfOverride && global == before.state.hardware
             ? "an override became the global mode"
             : "";
}

std::string Session::wrongImage() {
  auto* process = stage.process();
  if (!process || !process->statusItem().exists()) return {};
  const auto known = process->keyrow().modePolicy().lastKnownFnState();
  if (!known || actualState().shown == known) return {};
  return "the status item does not show what was last written or read";
}

std::string Session::wrongFarewell(const Before& before) {
  for (const auto& left : farewells_) {
    auto problem = wrongState(left, /*isGone=*/true);
    if (!problem.empty()) return problem;
  }
  const bool fellAsleep = stage.mac.power.isAsleep() && !before.isAsleep;
  auto* process = stage.process();
  const bool isAlone = before.runningCount == 1 && process && !process->isHanging();
  return fellAsleep && isAlone ? wrongState(actualState(), /*isGone=*/false) : "";
}

/// What is wrong with what a Keyrow left behind that has gone, or has fallen asleep.
std::string Session::wrongState(const ModeModel::State& left, bool isGone) {
  if (!left.global) return {};
  const bool mayPreferenceDiffer = hasLogged(stateLogText::failedToSynchronizePreference) ||
                                   hasLogged(stateLogText::failedToReadBeforePersisting);
  if (left.preference != left.global && !mayPreferenceDiffer) {
    return "the system preference is not the global mode";
  }
  const bool mayHardwareDiffer = hasLogged(stateLogText::failedToRestoreGlobal) ||
                                 hasLogged(stateLogText::cannotRestoreGlobal);
  if (isGone && left.hardware != left.global && !mayHardwareDiffer) {
    return "the keyboard is not in the global mode";
  }
  return {};
}

std::string Session::wrongTap(const sim::Action& action, const Before& before, bool isDone) {
  auto* process = stage.process();
  const bool isAlone = stage.runningCount() == 1 && !process->isHanging();
  if (isDone) followTrust(action);
  isTapResting_ |= hasLogged(inputLogText::stoppedTapAfterTimeouts);
  if (stage.mac.eventTaps.enabledCount() > 0) {
    if (isAlone && isDone && mustHaveStoppedTap(action, before)) return "a tap lives without trust";
    isTapExplained_ = isTapResting_ = false;
    // Of several instances, it may be any one's.
    tapOwner_.reset();
    if (stage.runningCount() == 1) tapOwner_ = tapStarter_ = process->processID();
    return {};
  }
  const bool isExplained =
      hasLogged(inputLogText::failedToCreateTap) || hasLogged(inputLogText::failedToRecoverTap) ||
      hasLogged(inputLogText::lostTrust) || hasLogged(inputLogText::stoppedTapAfterTimeouts);
  isTapExplained_ |= isExplained;
  if (isAlone && !isTapExplained_ && mustHaveTap(action, before)) {
    return "there is no event tap, and nobody has said why";
  }
  const auto* disable = std::get_if<sim::DisableTap>(&action);
  const bool isExcused = (disable && disable->announcement == 0) || isExplained || !isAlone ||
                         process->processID() != tapOwner_;
  if (isExcused) tapOwner_.reset();
  return tapOwner_ ? "the event tap is dead, and nobody has said why" : "";
}

/// A launch with the permission brings a tap, and so does waking up where there was one.
bool Session::mustHaveTap(const sim::Action& action, const Before& before) {
  auto& mac = stage.mac;
  if (std::holds_alternative<sim::Launch>(action)) {
    return before.runningCount == 0 && mac.isAccessibilityGranted;
  }
  return std::holds_alternative<sim::Wake>(action) && before.isAsleep &&
         stage.process()->processID() == tapStarter_;
}

/// Whether Keyrow had a chance to see that it is not trusted: another application came to the
/// front, the Mac woke up, or a notification has announced it and it has been told since.
bool Session::mustHaveStoppedTap(const sim::Action& action, const Before& before) {
  if (trustIsKnownLost_ && stage.mac.scheduler.now() >= *trustIsKnownLost_) return true;
  const bool mustLook = std::holds_alternative<sim::Front>(action) ||
                        (std::holds_alternative<sim::Wake>(action) && before.isAsleep);
  return mustLook && !stage.process()->platform().accessibility.isProcessTrusted();
}

void Session::followTrust(const sim::Action& action) {
  /// How long Keyrow looks after a notification.
  constexpr std::chrono::seconds lastLook{5};
  const auto* change = std::get_if<sim::ChangePermission>(&action);
  if (!change || change->which != sim::ChangePermission::Which::accessibility) return;
  trustIsKnownLost_.reset();
  const bool isTold = change->isAnnounced && change->lateness && *change->lateness <= lastLook;
  if (!change->isGranted && isTold) trustIsKnownLost_ = stage.mac.scheduler.now() + lastLook;
}

/// With nothing that fails, a trusted Keyrow has its tap back as soon as something happens, at
/// the latest when all attempts are over that it makes by itself; unless it lets it rest.
std::string Session::wrongComeback() {
  auto& mac = stage.mac;
  mac.faults.clear();
  auto* process = stage.process();
  if (!process || stage.runningCount() > 1 || process->isHanging()) return {};
  if (!mac.isAccessibilityGranted) return {};
  mac.scheduler.advance(std::chrono::seconds{8});
  if (!process->platform().accessibility.isProcessTrusted()) return {};
  if (!mac.power.isAsleep()) mac.power.sleep();
  mac.power.wake();
  mac.scheduler.runReady();
  if (mac.eventTaps.enabledCount() == 1 || isTapResting_) return {};
  return "the event tap does not come back";
}

bool Session::hasLogged(std::string_view beginning) {
  return std::ranges::any_of(stage.recentLog(), [&](const LogEntry& entry) {
    return entry.message.starts_with(beginning);
  });
}

/// Whether a mode could not be written since the line began.
bool Session::hasFailedToWrite() {
  return hasFailed(sim::PortCall::findService) || hasFailed(sim::PortCall::openConnection) ||
         hasFailed(sim::PortCall::setHidParameter);
}

/// Whether this call has failed since the line began.
bool Session::hasFailed(sim::PortCall call) {
  const sim::EventPattern failure{sim::TimelineEvent::Kind::fault,
                                  {std::string{sim::info(call).name}}};
  return std::ranges::any_of(stage.recentTimeline(),
                             [&](const auto& event) { return failure.matches(event); });
}

}  // namespace keyrow::reliability
