#include "reliability/Session.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "reliability/ModelLines.h"
#include "reliability/StageChecks.h"
#include "sim/ports/SimulatedMainRunLoop.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::reliability {

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
  const auto& line = step.text;
  const bool wasDisturbed = isDisturbed();
  sim::Outcome outcome;
  bool isCutShort = false;
  try {
    outcome = sim::playStep(step, stage);
  } catch (const sim::ProcessEnded&) {
    isCutShort = true;
    stage.mac.scheduler.runReady();
  }

  if (outcome.kind == sim::Outcome::Kind::done) {
    const bool isKnown = !isCutShort && tellModel(line, before) && followFrontmost();
    const bool isDisturbedNow = wasDisturbed || isDisturbed();
    if (!isKnown || isDisturbedNow) {
      adoptActual(/*isSwitch=*/line.starts_with("front ") && !isDisturbedNow);
    } else {
      ++comparedCount_;
    }
  }
  for (auto problem : {compareWithModel(), wrongStorage(line, before), wrongLoss(line, before),
                       wrongAdoption(line, before), wrongImage(), wrongFarewell(before),
                       wrongTap(line, before), leaks(stage)}) {
    if (!problem.empty()) return problem;
  }
  return {};
}

std::string Session::end() { return problemAfterQuit(stage); }

Session::Before Session::look() {
  auto* process = stage.process();
  return {.state = actualState(),
          .runningProcess = process ? std::optional{process->processID()} : std::nullopt,
          .runningCount = stage.runningCount(),
          .writtenCount = stage.mac.hid.writtenValues().size(),
          .isTapWorking = stage.mac.eventTaps.enabledCount() > 0,
          .isAsleep = stage.mac.power.isAsleep(),
          .alertCount = stage.mac.screen.alerts().size()};
}

ModeModel::State Session::actualState() {
  ModeModel::State state;
  state.hardware = modeNamed(stage.mac.hid.modeName());
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

bool Session::tellModel(const std::string& line, const Before& before) {
  if (line == "repair") hasUnknownFault_ = false;
  if (line.starts_with("fail ") && !isKnownFault(line)) {
    hasUnknownFault_ = true;
    // What was not synchronized comes later, even after a repair.
    if (line.starts_with("fail synchronize-preferences")) isModelLeftOut_ = true;
    return false;
  }
  if (line == "launch keyrow") {
    // The older instance hears of it, and goes.
    if (model_.isRunning) model_.quit();
    isShownUncertain_ = !model_.canRead || !model_.state.hardware;
    isPreviousUncertain_ = false;
    model_.launch();
    return true;
  }
  if (line.starts_with("post takeover targetPID=")) {
    const bool isMeant =
        before.runningProcess &&
        line == "post takeover targetPID=" + std::to_string(*before.runningProcess);
    if (isMeant) model_.quit();
    return true;
  }
  for (const auto* start : {"hold ", "setting shortcut ", "setting fn-replacement ",
                            "click \"Fn + ", "choose \"Right Option\""}) {
    if (line.starts_with(start)) areKeysUncertain_ = true;
  }
  if (areKeysUncertain_ && line.starts_with("press ")) return false;
  const bool isShortcut = line.starts_with("press fn+escape ") || line.starts_with("press fn+` ");
  if (isShortcut && (!before.isTapWorking || !model_.isRunning)) return true;
  if (line.starts_with("front ") && !canFollowSwitch()) return false;
  // Whoever cannot read now tries again later.
  if (!model_.canRead || !model_.state.hardware) isShownUncertain_ = true;
  return happen(line, model_);
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
  return !isPreviousUncertain_ && !(isShownUncertain_ && mayBeLeftover);
}

/// The model cannot tell, so it goes on from what there is. A switch tells Keyrow which
/// application is the previous one.
void Session::adoptActual(bool isSwitch) {
  model_.state = actualState();
  auto* process = stage.process();
  model_.isRunning = process != nullptr;
  const auto* policy = process ? &process->keyrow().modePolicy() : nullptr;
  model_.hasFailedToWrite =
      policy && policy->isLeftover(policy->lastKnownFnState().value_or(FnState::special));
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

std::string Session::wrongStorage(const std::string& line, const Before& before) {
  // Somebody else's hand.
  if (line.starts_with("defaults ")) return {};
  const auto now = actualState();
  const auto written = stage.mac.hid.writtenValues();
  const auto wasWritten = [&](FnState mode) {
    return std::find(written.begin() + static_cast<std::ptrdiff_t>(before.writtenCount),
                     written.end(), PropertyValue{rawValue(mode)}) != written.end();
  };
  for (const auto& [app, mode] : now.overrides) {
    const auto found = before.state.overrides.find(app);
    if (found != before.state.overrides.end() && found->second == mode) continue;
    if (!wasWritten(mode)) return "an override was stored for " + app + " that was never written";
  }
  if (!now.global || now.global == before.state.global || wasWritten(*now.global)) return {};
  // What is adopted was there: in the keyboard, or in the system preference, which may be an
  // old one where it could not be synchronized.
  if (hasFailed("synchronize-preferences")) return {};
  for (const auto& seen : {before.state.hardware, now.hardware, before.state.preference}) {
    if (seen == now.global) return {};
  }
  return "a global mode was stored that was never there";
}

std::string Session::wrongLoss(const std::string& line, const Before& before) {
  if (line.starts_with("defaults ") || hasLogged("Cleared the current app override")) return {};
  // To Keyrow it looks as if the application had been removed.
  if (hasFailed("find-application")) return {};
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
std::string Session::wrongAdoption(const std::string& line, const Before& before) {
  const bool wasOfOverride = isHardwareOfOverride_;
  const auto written = stage.mac.hid.writtenValues();
  const auto global = actualState().global;
  if (line.starts_with("system-settings ") || line.starts_with("hardware ")) {
    isHardwareOfOverride_ = false;
  } else if (written.size() > before.writtenCount) {
    isHardwareOfOverride_ =
        before.runningCount <= 1 && (!global || written.back() != PropertyValue{rawValue(*global)});
  }
  const bool isAdopted = hasLogged("Synchronized the stored global function key mode");
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
  const bool mayPreferenceDiffer =
      hasLogged("Failed to synchronize the global function key mode") ||
      hasLogged("Failed to read the current function key mode before persisting defaults");
  if (left.preference != left.global && !mayPreferenceDiffer) {
    return "the system preference is not the global mode";
  }
  const bool mayHardwareDiffer =
      hasLogged("Failed to restore the global function key mode before termination") ||
      hasLogged("Unable to restore the global function key mode before termination");
  if (isGone && left.hardware != left.global && !mayHardwareDiffer) {
    return "the keyboard is not in the global mode";
  }
  return {};
}

std::string Session::wrongTap(const std::string& line, const Before& before) {
  auto* process = stage.process();
  if (stage.mac.eventTaps.enabledCount() > 0) {
    tapOwner_ = tapStarter_ = process ? std::optional{process->processID()} : std::nullopt;
    return {};
  }
  const bool isAlone = stage.runningCount() == 1 && !process->isHanging();
  const bool isExplained = hasLogged("Failed to create the keyboard event tap.") ||
                           hasLogged("Failed to recover the keyboard event tap") ||
                           stage.mac.screen.alerts().size() > before.alertCount;
  if (isAlone && !isExplained && mustHaveTap(line, before)) {
    return "there is no event tap, and nobody has said why";
  }
  const bool isExcused = line == "disable tap silently" || isExplained || !isAlone ||
                         process->processID() != tapOwner_;
  if (isExcused) tapOwner_.reset();
  return tapOwner_ ? "the event tap is dead, and nobody has said why" : "";
}

/// A launch with both permissions brings a tap, and so does waking up where there was one.
bool Session::mustHaveTap(const std::string& line, const Before& before) {
  auto& mac = stage.mac;
  if (line == "launch keyrow") {
    return before.runningCount == 0 && mac.isAccessibilityGranted && mac.isInputMonitoringGranted;
  }
  return line == "wake" && before.isAsleep && stage.process()->processID() == tapStarter_;
}

bool Session::hasLogged(std::string_view beginning) {
  return std::ranges::any_of(stage.recentLog(), [&](const LogEntry& entry) {
    return entry.message.starts_with(beginning);
  });
}

/// Whether this call has failed since the line began.
bool Session::hasFailed(std::string_view call) {
  return std::ranges::any_of(stage.recentTimeline(), [&](const sim::TimelineEvent& event) {
    return event.kind == sim::TimelineEvent::Kind::fault && event.text.starts_with(call);
  });
}

}  // namespace keyrow::reliability
