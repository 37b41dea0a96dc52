#include "reliability/TapWatch.h"

#include <string_view>
#include <variant>

#include "core/ModePolicy.h"
#include "input/InputLogTexts.h"
#include "sim/scenario/Action.h"

namespace keyrow::reliability {

std::string TapWatch::problem(const sim::Action& action, const Before& before, bool isDone) {
  auto* process = stage_.process();
  // One that hangs keeps its tap, and may be any user's.
  const bool isAlone = process && stage_.runningCount() == 1 && !stage_.isAnyHanging();
  if (isDone) followTrust(action);
  if (isDone && std::holds_alternative<sim::SwitchUser>(action)) {
    tapOwner_.reset();
    tapStarter_.reset();
    isTapExplained_ = true;
  }
  isTapResting_ |= stage_.hasLogged(inputLogText::stoppedTapAfterTimeouts);
  if (stage_.mac.eventTaps.enabledCount() > 0) {
    if (isAlone && isDone && mustHaveStoppedTap(action, before)) return "a tap lives without trust";
    isTapExplained_ = isTapResting_ = false;
    // Of several instances, it may be any one's.
    tapOwner_.reset();
    if (isAlone) tapOwner_ = tapStarter_ = process->processID();
    return {};
  }
  const bool isExplained = stage_.hasLogged(inputLogText::failedToCreateTap) ||
                           stage_.hasLogged(inputLogText::failedToRecoverTap) ||
                           stage_.hasLogged(inputLogText::lostTrust) ||
                           stage_.hasLogged(inputLogText::stoppedTapAfterTimeouts);
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
bool TapWatch::mustHaveTap(const sim::Action& action, const Before& before) {
  auto& mac = stage_.mac;
  if (std::holds_alternative<sim::Launch>(action)) {
    return before.runningCount == 0 && mac.isAccessibilityGranted;
  }
  return std::holds_alternative<sim::Wake>(action) && before.isAsleep &&
         stage_.process()->processID() == tapStarter_;
}

/// Whether Keyrow had a chance to see that it is not trusted: another application came to the
/// front, the Mac woke up, or a notification has announced it and it has been told since.
bool TapWatch::mustHaveStoppedTap(const sim::Action& action, const Before& before) {
  if (trustIsKnownLost_ && stage_.mac.scheduler.now() >= *trustIsKnownLost_) return true;
  const bool mustLook = std::holds_alternative<sim::Front>(action) ||
                        (std::holds_alternative<sim::Wake>(action) && before.isAsleep);
  return mustLook && !stage_.process()->platform().accessibility.isProcessTrusted();
}

void TapWatch::followTrust(const sim::Action& action) {
  /// How long Keyrow looks after a notification.
  constexpr std::chrono::seconds lastLook{5};
  const auto* change = std::get_if<sim::ChangePermission>(&action);
  if (!change || change->which != sim::ChangePermission::Which::accessibility) return;
  trustIsKnownLost_.reset();
  const bool isTold = change->isAnnounced && change->lateness && *change->lateness <= lastLook;
  if (!change->isGranted && isTold) trustIsKnownLost_ = stage_.mac.scheduler.now() + lastLook;
}

/// With nothing that fails, a trusted Keyrow has its tap back as soon as something happens, at
/// the latest when all attempts are over that it makes by itself; unless it lets it rest.
std::string TapWatch::problemOfComeback() {
  auto& mac = stage_.mac;
  mac.faults.clear();
  auto* process = stage_.process();
  if (!process || stage_.runningCount() > 1 || stage_.isAnyHanging()) return {};
  if (!mac.isAccessibilityGranted || !process->keyrow().modePolicy().isSessionActive()) return {};
  mac.scheduler.advance(std::chrono::seconds{8});
  isTapResting_ |= stage_.hasLogged(inputLogText::stoppedTapAfterTimeouts);
  if (!process->platform().accessibility.isProcessTrusted()) return {};
  if (!mac.power.isAsleep()) mac.power.sleep();
  mac.power.wake();
  mac.scheduler.runReady();
  if (mac.eventTaps.enabledCount() == 1 || isTapResting_) return {};
  return "the event tap does not come back";
}

}  // namespace keyrow::reliability
