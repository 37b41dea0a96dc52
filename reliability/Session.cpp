#include "reliability/Session.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "reliability/ModelLines.h"
#include "reliability/StageChecks.h"
#include "sim/SimulatedMainRunLoop.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/ScenarioPlayer.h"

namespace keyrow::reliability {

Session::Session() {
  model.installed = {"com.apple.finder", "com.apple.systempreferences", "com.apple.SystemSettings"};
  model.state = actualState();
}

std::string Session::play(const std::string& line) {
  const auto step = sim::parseLine(line, 1);
  return step ? play(**step) : "the line cannot be parsed: " + line;
}

std::string Session::play(const sim::Step& step) {
  const auto before = look();
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
  for (auto problem : {compareWithModel(), wrongStorage(line, before), wrongImage(),
                       wrongFarewell(before), wrongTap(line, before), leaks(stage)}) {
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
  return hasUnknownFault || stage.runningCount() > 1 || (process && process->isHanging());
}

bool Session::tellModel(const std::string& line, const Before& before) {
  if (line == "repair") hasUnknownFault = false;
  if (line.starts_with("fail ") && !isKnownFault(line)) {
    hasUnknownFault = true;
    return false;
  }
  if (line == "launch keyrow") {
    // The older instance hears of it, and goes.
    if (model.isRunning) model.quit();
    isShownUncertain = !model.canRead || !model.state.hardware;
    isPreviousUncertain = false;
    model.launch();
    return true;
  }
  if (line.starts_with("post takeover targetPID=")) {
    const bool isMeant =
        before.runningProcess &&
        line == "post takeover targetPID=" + std::to_string(*before.runningProcess);
    if (isMeant) model.quit();
    return true;
  }
  const bool isShortcut = line.starts_with("press fn+escape ") || line.starts_with("press fn+` ");
  if (isShortcut && (!before.isTapWorking || !model.isRunning)) return true;
  if (line.starts_with("front ") && isPreviousUncertain) return false;
  // Whoever cannot read now tries again later.
  if (!model.canRead || !model.state.hardware) isShownUncertain = true;
  return happen(line, model);
}

/// Keyrow comes to the front when it shows its window; false when the model cannot follow.
bool Session::followFrontmost() {
  const auto& frontmost = stage.mac.applications.frontmost();
  if (frontmost == model.frontmost) return true;
  if (isPreviousUncertain) return false;
  model.switchTo(frontmost);
  return true;
}

/// The model cannot tell, so it goes on from what there is. A switch tells Keyrow which
/// application is the previous one.
void Session::adoptActual(bool isSwitch) {
  model.state = actualState();
  model.isRunning = stage.process() != nullptr;
  model.frontmost = stage.mac.applications.frontmost();
  model.previous = model.frontmost;
  isPreviousUncertain = !isSwitch;
  isShownUncertain = true;
}

std::string Session::compareWithModel() {
  auto actual = actualState();
  auto expected = model.state;
  if (isShownUncertain) actual.shown = expected.shown;
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
  // What is adopted was there: in the keyboard, or in the system preference.
  for (const auto& seen : {before.state.hardware, now.hardware, before.state.preference}) {
    if (seen == now.global) return {};
  }
  return "a global mode was stored that was never there";
}

std::string Session::wrongImage() {
  auto* process = stage.process();
  if (!process || !process->statusItem().exists()) return {};
  const auto known = process->keyrow().modePolicy().lastKnownFnState();
  if (!known || actualState().shown == known) return {};
  return "the status item does not show what was last written or read";
}

std::string Session::wrongFarewell(const Before& before) {
  const auto now = actualState();
  const bool fellAsleep = stage.mac.power.isAsleep() && !before.isAsleep;
  const auto events = stage.recentTimeline();
  const auto hasHappened = [&](std::string_view end) {
    return std::ranges::any_of(events, [end](const sim::TimelineEvent& event) {
      return event.kind == sim::TimelineEvent::Kind::process && event.text.ends_with(end);
    });
  };
  const bool isGone =
      hasHappened("has quit") && !hasHappened("was killed") && stage.runningCount() == 0;
  auto* process = stage.process();
  const bool isAlone = before.runningCount == 1 && process && !process->isHanging();
  if (!now.global || (!isGone && !(fellAsleep && isAlone))) return {};

  const bool mayPreferenceDiffer =
      hasLogged("Failed to synchronize the global function key mode") ||
      hasLogged("Failed to read the current function key mode before persisting defaults");
  if (now.preference != now.global && !mayPreferenceDiffer) {
    return "the system preference is not the global mode";
  }
  const bool mayHardwareDiffer =
      hasLogged("Failed to restore the global function key mode before termination") ||
      hasLogged("Unable to restore the global function key mode before termination");
  if (isGone && now.hardware != now.global && !mayHardwareDiffer) {
    return "the keyboard is not in the global mode";
  }
  return {};
}

std::string Session::wrongTap(const std::string& line, const Before& before) {
  auto* process = stage.process();
  if (stage.mac.eventTaps.enabledCount() > 0) {
    tapOwner = process ? std::optional{process->processID()} : std::nullopt;
    return {};
  }
  const bool isExcused =
      line == "disable tap silently" || hasLogged("Failed to create the keyboard event tap.") ||
      hasLogged("Failed to recover the keyboard event tap") ||
      stage.mac.screen.alerts().size() > before.alertCount || stage.runningCount() != 1 ||
      process->isHanging() || process->processID() != tapOwner;
  if (isExcused) tapOwner.reset();
  return tapOwner ? "the event tap is dead, and nobody has said why" : "";
}

bool Session::hasLogged(std::string_view beginning) {
  return std::ranges::any_of(stage.recentLog(), [&](const LogEntry& entry) {
    return entry.message.starts_with(beginning);
  });
}

}  // namespace keyrow::reliability
