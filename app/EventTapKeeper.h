#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "input/KeyboardEventTapController.h"
#include "input/Permissions.h"
#include "platform/Alerts.h"
#include "platform/Application.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/MainQueue.h"
#include "platform/MainRunLoop.h"
#include "platform/NotificationCenter.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Posted in the process when Keyrow has noticed that it got the Accessibility permission, or
/// has lost it.
inline constexpr std::string_view accessibilityTrustDidChange = "AccessibilityTrustDidChange";

/// Decides when there is a keyboard event tap: when it is made, repaired, stopped, given a
/// rest, and tried again. Others tell it what happened. Main thread only.
///
/// A tap whose process is not trusted holds up the whole keyboard, so trust is looked at
/// whenever it may have changed, and before anything is done for the tap.
class EventTapKeeper {
 public:
  /// `inputLog` is the logger of the "input" category.
  struct Uses {
    KeyboardEventTapController& eventTapController;
    Permissions& permissions;
    Alerts& alerts;
    Application& application;
    DistributedNotificationCenter& distributedNotificationCenter;
    MainQueue& mainQueue;
    MainRunLoop& mainRunLoop;
    NotificationCenter& notificationCenter;
    Workspace& workspace;
    Logger& inputLog;
  };

  explicit EventTapKeeper(const Uses& uses) : use_{uses} {}

  /// Makes the tap, where Keyrow is trusted, and follows the trust from now on. Posts
  /// `accessibilityTrustDidChange` when it changes.
  void start();

  /// Keyrow became active, or another application did.
  void look();

  /// The same where nobody may have been told that the tap does not work any more: after the Mac
  /// has woken up, and before somebody is told how things stand.
  void lookClosely();

  /// The system has disabled the tap, which `eventType` announced.
  void tapWasDisabled(std::uint32_t eventType);

  /// Whether there is a tap, and it works as far as is known.
  bool hasEventTap() const { return state_ == State::running; }

  /// Ends the tap until it is started again.
  void stop();

  /// The same, and waits for the workers.
  void stopAndWait();

 private:
  /// How long the first rest lasts; each that follows right after it, twice as long.
  static constexpr std::chrono::minutes firstRest{1};

  enum class State {
    /// Keyrow may not have a tap.
    untrusted,
    /// There is a tap.
    running,
    /// It could not be made, and is tried again.
    failing,
    /// It has been timed out again and again; a new one is made after a rest.
    resting,
  };

  void lookRepeatedly();
  bool checkTrust();
  void lose();
  void regain();

  void make();
  void hasMade();
  void hasFailed();
  void tryLater();
  void rest();
  void putOnProbation();

  void showAlert();

  const Uses use_;

  State state_ = State::untrusted;
  ObserverToken trustObserver_;
  /// After a notification.
  std::vector<DelayedCall> looks_;
  /// How often it has been tried again, and the next time.
  std::size_t retryCount_ = 0;
  DelayedCall retry_;
  /// Of the next rest, and the end of this one.
  std::chrono::minutes restDuration_ = firstRest;
  DelayedCall endOfRest_;
  /// The next timeout stops the tap.
  bool isOnProbation_ = false;
  DelayedCall endOfProbation_;
  /// Since the last tap was made.
  bool hasShownAlert_ = false;
};

}  // namespace keyrow
