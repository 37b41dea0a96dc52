#include <optional>
#include <string>
#include <utility>

#include "core/AppIdentifier.h"
#include "platform/HidSystem.h"
#include "reliability/Session.h"
#include "reliability/StageChecks.h"
#include "reliability/StageSights.h"
#include "reliability/Sweeps.h"
#include "sim/machine/ModeWords.h"
#include "sim/ports/SimulatedMainRunLoop.h"

namespace keyrow::reliability {

namespace {

struct StoredModes {
  std::optional<FnState> global;
  PropertyDictionary overrides;
};

StoredModes storedModes(sim::Stage& stage) {
  const auto local = stage.mac.defaults.value(stage.keyrowDomain(), settingsKey::localFnState);
  const auto* overrides = local ? local->dictionary() : nullptr;
  return {.global = stage.storedFnStates().global(),
          .overrides = overrides ? *overrides : PropertyDictionary{}};
}

/// What was chosen there before Keyrow was killed, or while it did not run, and it has not seen.
std::optional<FnState> chosenInSystemSettings(sim::Stage& stage) {
  const auto seen = stage.storedFnStates().lastSeenPreference();
  const auto mode = systemPreference(stage, stage.mac.sessions.active());
  if (!seen || !mode || stage.storedFnStates().isGlobalManaged()) return std::nullopt;
  const bool isAgreed = sim::modeOfWord(stage.mac.hid.modeName()) == mode;
  return isAgreed && rawValue(*mode) != *seen ? mode : std::nullopt;
}

struct Crash {
  /// False when Keyrow lived to see the end, or was not alone at that point.
  bool isKilled = false;
  /// What was wrong when it was dead.
  std::string problem;
};

/// Plays a scenario up to the point at which Keyrow is killed.
Crash playUntilCrash(const sim::Scenario& scenario, std::uint64_t point, Session& session) {
  Crash crash;
  session.disturb();
  session.stage.mac.crashPoints.arm(point, [&] {
    if (session.stage.runningCount() != 1 || !session.stage.process()) return;
    crash.isKilled = true;
    session.stage.process()->kill();
    throw sim::ProcessEnded{};
  });
  for (const auto& step : scenario.steps) {
    if (!step.action()) continue;
    auto problem = session.play(step);
    if (!crash.isKilled) continue;
    crash.problem = std::move(problem);
    break;
  }
  return crash;
}

std::string problemAfterRelaunch(sim::Stage& stage) {
  stage.mac.faults.clear();
  const auto before = storedModes(stage);
  const auto chosen = chosenInSystemSettings(stage);
  stage.launchKeyrow();
  stage.mac.scheduler.runReady();
  const auto now = storedModes(stage);

  const auto expected = chosen && before.global ? chosen : before.global;
  if (expected && now.global != expected) return "the global mode is another one";
  for (const auto& [app, mode] : before.overrides) {
    const auto found = now.overrides.find(app);
    const bool isLost = found == now.overrides.end() && stage.mac.applications.isInstalled(app);
    const bool isChanged = found != now.overrides.end() && found->second != mode;
    if (isLost || isChanged) return "the override of " + app + " is lost or another one";
  }
  if (!now.global) return {};

  const auto& frontmost = stage.mac.applications.frontmost();
  const auto local = frontmost ? stage.storedFnStates().local(*frontmost) : std::nullopt;
  if (stage.mac.hid.parameter(hidFKeyModeKey) !=
      PropertyValue{rawValue(local ? *local : *now.global)}) {
    return "the keyboard is not in the mode of the application in front";
  }
  return problemAfterQuit(stage);
}

}  // namespace

SweepResult sweepCrashes(const sim::Scenario& scenario) {
  Session undisturbed;
  playUntilCrash(scenario, 0, undisturbed);
  const auto pointCount = undisturbed.stage.mac.crashPoints.count();

  SweepResult result;
  for (std::uint64_t point = 1; point <= pointCount; ++point) {
    Session session;
    const auto crash = playUntilCrash(scenario, point, session);
    if (!crash.isKilled) continue;
    ++result.pointCount;
    const auto problem =
        crash.problem.empty() ? problemAfterRelaunch(session.stage) : crash.problem;
    if (problem.empty()) continue;
    result.problems.push_back(scenario.name + ", killed at its port call " + std::to_string(point) +
                              ": " + problem);
  }
  return result;
}

}  // namespace keyrow::reliability
