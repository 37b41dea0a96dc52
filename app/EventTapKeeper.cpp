#include "app/EventTapKeeper.h"

#include <array>
#include <string>
#include <utility>

#include "input/InputLogTexts.h"
#include "ui/PermissionSettings.h"

namespace keyrow {

namespace {

using namespace std::chrono_literals;

/// Posted by macOS when the list of those who have the permission changes. Documented nowhere,
/// and relied upon widely.
constexpr std::string_view accessibilityListDidChange = "com.apple.accessibility.api";

/// When trust is looked at again after that, as macOS may still tell the old one then.
constexpr std::array<std::chrono::milliseconds, 5> looksAfterChange{250ms, 500ms, 1s, 2s, 5s};

/// When a tap that could not be made is tried again after the first failure: for some seconds
/// after the user has logged in macOS may refuse it. Later only when something happens.
constexpr std::array<std::chrono::milliseconds, 5> retryTimes{500ms, 1s, 2s, 4s, 8s};

/// A tap that is timed out within this time after a timeout, or after its making because of
/// one, is stopped.
constexpr auto probation = 2min;

}  // namespace

void EventTapKeeper::start() {
  trustObserver_ = use_.distributedNotificationCenter.addObserver(
      accessibilityListDidChange, std::nullopt, [this](const auto&) { lookRepeatedly(); });
  if (use_.permissions.isProcessTrusted()) make();
}

void EventTapKeeper::lookRepeatedly() {
  checkTrust();
  looks_.clear();
  for (const auto time : looksAfterChange) {
    looks_.push_back(use_.mainQueue.after(time, [this] { checkTrust(); }));
  }
}

void EventTapKeeper::look() {
  if (!checkTrust()) return;
  const bool areRetriesOver = retryCount_ == retryTimes.size();
  if (state_ == State::failing && areRetriesOver) make();
}

void EventTapKeeper::lookClosely() {
  look();
  // macOS can disable a tap without ever announcing it, during sleep above all.
  if (state_ == State::running && !use_.eventTapController.reviveEventTap()) hasFailed();
}

void EventTapKeeper::tapWasDisabled(std::uint32_t eventType) {
  if (!checkTrust()) return;
  if (eventType == keyEventType::tapDisabledByTimeout) {
    if (isOnProbation_) return rest();
    putOnProbation();
  }
  if (use_.eventTapController.recoverEventTap(eventType)) return;
  state_ = State::failing;
  tryLater();
}

void EventTapKeeper::stop() {
  trustObserver_ = {};
  looks_.clear();
  retryCount_ = 0;
  retry_ = {};
  endOfRest_ = {};
  restDuration_ = firstRest;
  isOnProbation_ = false;
  endOfProbation_ = {};
  state_ = State::untrusted;
  use_.eventTapController.stopEventTap();
}

void EventTapKeeper::stopAndWait() {
  stop();
  use_.eventTapController.stopEventTapAndWait();
}

/// Whether Keyrow is trusted; where that has changed, the tap has been stopped or made.
bool EventTapKeeper::checkTrust() {
  const bool isTrusted = use_.permissions.isProcessTrusted();
  const bool wasTrusted = state_ != State::untrusted;
  if (wasTrusted && !isTrusted) lose();
  if (!wasTrusted && isTrusted) regain();
  return isTrusted;
}

void EventTapKeeper::lose() {
  use_.eventTapController.stopEventTap();
  state_ = State::untrusted;
  retryCount_ = 0;
  retry_ = {};
  endOfRest_ = {};
  use_.inputLog.notice(inputLogText::lostTrust);
  use_.notificationCenter.post(accessibilityTrustDidChange);
}

void EventTapKeeper::regain() {
  use_.inputLog.notice(inputLogText::regainedTrust);
  make();
  use_.notificationCenter.post(accessibilityTrustDidChange);
}

void EventTapKeeper::make() {
  if (use_.eventTapController.startEventTap()) {
    hasMade();
  } else {
    hasFailed();
  }
}

void EventTapKeeper::hasMade() {
  if (state_ == State::failing) use_.inputLog.notice(inputLogText::createdTapAfterFailure);
  if (state_ == State::resting) use_.inputLog.notice(inputLogText::createdTapAfterRest);
  state_ = State::running;
  retryCount_ = 0;
  hasShownAlert_ = false;
  const bool hasRested = restDuration_ > firstRest;
  if (hasRested) putOnProbation();
}

void EventTapKeeper::hasFailed() {
  if (state_ != State::failing) use_.inputLog.error(inputLogText::failedToCreateTap);
  state_ = State::failing;
  tryLater();
}

void EventTapKeeper::tryLater() {
  if (retryCount_ == retryTimes.size()) return showAlert();
  const auto passed = retryCount_ > 0 ? retryTimes.at(retryCount_ - 1) : 0ms;
  retry_ = use_.mainQueue.after(retryTimes.at(retryCount_) - passed, [this] {
    ++retryCount_;
    if (checkTrust()) make();
  });
}

void EventTapKeeper::rest() {
  use_.eventTapController.stopEventTap();
  isOnProbation_ = false;
  endOfProbation_ = {};
  state_ = State::resting;
  use_.inputLog.error(std::string{inputLogText::stoppedTapAfterTimeouts} +
                      std::to_string(restDuration_.count()) + " min.");
  endOfRest_ = use_.mainQueue.after(restDuration_, [this] {
    if (checkTrust()) make();
  });
  restDuration_ *= 2;
}

void EventTapKeeper::putOnProbation() {
  isOnProbation_ = true;
  endOfProbation_ = use_.mainQueue.after(probation, [this] {
    isOnProbation_ = false;
    restDuration_ = firstRest;
  });
}

/// Not from here, which may be a block of the main queue: that would stand still until the
/// user has answered.
void EventTapKeeper::showAlert() {
  use_.mainRunLoop.perform([this] {
    if (state_ != State::failing || std::exchange(hasShownAlert_, true)) return;
    // Looked at for all who show it, and not only for this alert.
    use_.permissions.access();
    const auto& settings = settingsOf(use_.permissions.missing());
    // An alert of an application that is not active can come up behind everything.
    use_.application.activateIgnoringOtherApps();
    use_.alerts.runModal(
        {.messageText = "Keyrow could not start keyboard monitoring",
         .informativeText =
             "Keyrow may still be missing Input Monitoring, or macOS may not have applied its "
             "permissions yet. Try reopening Keyrow, or remove and re-add Keyrow in System "
             "Settings > Privacy & Security > Accessibility and Input Monitoring.",
         .buttons = {settings.alertButtonTitle, "OK"},
         .preventsTermination = false},
        [this, &settings](int response) {
          if (response == alertFirstButtonReturn) openPermissionSettings(settings, use_.workspace);
        });
  });
}

}  // namespace keyrow
