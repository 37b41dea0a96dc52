#pragma once

#include <list>
#include <optional>
#include <string>
#include <string_view>

#include "core/AppSettings.h"
#include "core/FnState.h"
#include "core/FnStateController.h"
#include "core/FnStatePersistReason.h"
#include "core/HardwareCustody.h"
#include "core/KeyboardDeviceSource.h"
#include "core/MissingApplications.h"
#include "core/ModeChanges.h"
#include "core/PreferenceEvidence.h"
#include "core/StoredFnStates.h"
#include "platform/Clock.h"
#include "platform/MainQueue.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Shows the user which mode is in force.
class ModePresenter {
 public:
  /// The hardware holds this mode now.
  virtual void fnStateDidChange(FnState state) = 0;

  /// The mode in force comes from an override (local), or from the global mode.
  virtual void scopeDidChange(bool isLocalScopeActive) = 0;

  /// A command of the user has worked; what came of it has been told before.
  virtual void commandWorked() = 0;

 protected:
  ~ModePresenter() = default;
};

/// The modes that the menu departs from; absent where none can be found.
struct ModesToOffer {
  std::optional<FnState> global;
  /// The frontmost application's.
  std::optional<FnState> local;
  /// Whether there is an application that can have an override.
  bool hasFrontmostApplication = false;
  /// Whether an administrator manages them, so that they cannot be changed.
  bool isGlobalManaged = false;
  bool isLocalManaged = false;
};

/// Decides which mode applies: the frontmost application's override, or else the
/// global mode. Others tell it what happened, and show what it decided. Main thread only.
/// Nothing fails outward: what goes wrong is logged, and a mode is stored only after the
/// hardware took it.
///
/// The user may choose modes elsewhere, too. What another process stores is obeyed as soon as it
/// is known, and before anything else. A global mode is adopted for two reasons:
///
/// - There is evidence that it was chosen in System Settings (see `PreferenceEvidence`). That
///   counts whatever override is in force.
/// - The hardware holds a mode that is no leftover, where no override is in force or System
///   Settings is in front. A leftover is the mode of an override, what was there before a
///   write that failed, what was there at launch, and what is there in the first second after
///   another user's session.
///
/// A command's `source` is the keyboard that issued it; null for mouse and menu.
class ModePolicy final : public ModeChanges {
 public:
  /// What it uses. `presenter` shows the mode; the loggers are those of the categories
  /// "state" and "app".
  struct Uses {
    FnStateController& fnStateController;
    StoredFnStates& storedFnStates;
    const AppSettings& settings;
    Workspace& workspace;
    MainQueue& mainQueue;
    Clock& clock;
    ModePresenter& presenter;
    Logger& stateLog;
    Logger& appLog;
  };

  explicit ModePolicy(const Uses& uses) : use_{uses} {}

  /// The mode last written to or read from the hardware; absent before the first.
  std::optional<FnState> lastKnownFnState() const { return lastKnownFnState_; }

  /// Whether the mode in force came from an override.
  bool isLocalScopeActive() const { return isLocalScopeActive_; }

  /// Whether this user's session is in front, as far as is known.
  bool isSessionActive() const { return isSessionActive_; }

  // What happened.

  /// Keyrow is about to launch: in a session that may not be the one in front.
  void willLaunch();

  /// Another user's session comes to the front. Until this one is back, nothing is written into
  /// the hardware, and nothing is adopted.
  void sessionResigned();
  void sessionBecameActive();

  /// Older instances that don't answer are about to be forced out, which keeps them from
  /// restoring the mode.
  void takesOver();

  /// A newer instance takes over. `isTooLate` when it has done so without this one: what is in the
  /// keyboard and in the store is the newer one's, and nothing is touched any more.
  void yields(bool isTooLate);

  /// Keyrow is in control of the keyboard now.
  void launched();

  /// Another application has come to the front, or none is there any more. Gives whether System
  /// Settings was left.
  bool switchedApplication();

  /// The item in the menu bar was clicked: flips the override while one is in force, or
  /// else the global mode.
  void clicked();

  /// Another program asks how things stand. It is told what a command would depart from.
  void isAsked() { beforeCommand(); }

  /// The menu is about to open.
  ModesToOffer menuOpens();

  /// The Mac has woken up: the keyboard may have come back in another mode.
  void didWake();

  /// The Mac is about to sleep.
  void willSleep();

  /// Keyrow is about to quit, and then has stopped everything.
  void willQuit();
  void hasStopped();

  // The user's commands; whoever uses VoiceOver hears what came of them.

  void setGlobalFnState(FnState state, const KeyboardDeviceSource* source);
  void toggleGlobalFnState(const KeyboardDeviceSource* source);

  /// Creates or changes one application's override, and applies it.
  void setLocalFnState(FnState state, const std::string& bundleIdentifier,
                       const KeyboardDeviceSource* source);

  /// Creates the frontmost application's override, opposite to the global mode, or
  /// flips the one it has.
  void toggleLocalOverride(const KeyboardDeviceSource* source);

  /// Removes the frontmost application's override and restores the global mode; where
  /// there is no override, flips the global mode.
  void clearLocalOverride(const KeyboardDeviceSource* source);

  // What other programs ask for, on the user's behalf; nothing is spoken.

  /// Whether this Keyrow takes requests: it has been launched, and has neither yielded nor begun
  /// to quit.
  bool takesRequests() const { return isInControl_ && !isLeaving_; }

  CommandResult setGlobalMode(FnState state) override;
  CommandResult flipGlobalMode() override;
  CommandResult setOverride(const std::string& bundleIdentifier, FnState state) override;
  CommandResult clearOverride(const std::string& bundleIdentifier) override;

  // What these come down to.

  /// Applies the frontmost application's override, or else the stored global mode.
  void applyStoredFnState();

  /// Gives the stored global mode back to the hardware before Keyrow lets go of it.
  void restoreGlobalFnState();

  /// The stored global mode. Where none is stored, the system preference's or else the
  /// hardware's is stored first, unless that is an override's; absent when there is neither.
  std::optional<FnState> storedGlobalFnState();

  /// Brings `lastKnownFnState` up to date with the hardware; retries a failed read at
  /// most three times, 0.35, 0.7 and 1.05 s apart.
  void refreshFromHardware();

  /// Forgets the overrides of applications that are missing, and were so a minute ago.
  void pruneLocalFnStates();

 private:
  /// A mode in the hardware that nobody has chosen for all applications.
  struct Leftover {
    /// Absent while it has not been read.
    std::optional<FnState> mode;
    /// Whether it came of an override.
    bool isOfOverride = false;
  };

  // What somebody has chosen behind Keyrow's back. `origin` tells the log where it was found.

  void beforeCommand();
  void adopt(std::string_view origin, bool alsoFromHardware);
  bool adoptByEvidence(std::string_view origin, PreferenceEvidence::Hardware hardware =
                                                    PreferenceEvidence::Hardware::isOurs);
  void adoptFromHardware(std::optional<FnState> hardware, std::string_view origin);
  void syncStoredGlobalFnState(FnState state, std::string_view origin);
  bool isLeftover(FnState hardware);
  bool holdsOverride() const { return leftover_ && leftover_->isOfOverride; }
  bool mayAdoptFromHardware() const;

  bool mayChangeGlobal();
  bool mayChangeLocals();
  bool refusesManaged(bool isManaged, bool& hasSaid, std::string_view what);

  // What another process has stored.

  void obeyStore(PreferenceEvidence::Hardware hardware = PreferenceEvidence::Hardware::isOurs);
  void lookAgain();
  bool isFollowing() const { return isInControl_ && isSessionActive_; }
  bool hasKeyboard() const;
  void noteStore() { seenStore_ = use_.storedFnStates.all(); }

  // What the commands do, once that is settled.

  CommandResult setGlobal(FnState state, const KeyboardDeviceSource* source);
  CommandResult toggleGlobal(const KeyboardDeviceSource* source);
  CommandResult setLocal(FnState state, const std::string& bundleIdentifier,
                         const KeyboardDeviceSource* source);
  CommandResult clearLocal(const std::string& bundleIdentifier, const KeyboardDeviceSource* source);
  void tell(CommandResult result);
  CommandResult whyNotApplied() const;

  std::optional<FnState> currentFnState();
  std::optional<FnState> globalOrCurrentFnState();
  bool storeGlobal(FnState state);
  void persist(FnStatePersistReason reason);
  bool apply(FnState state, std::string_view action, const KeyboardDeviceSource* source);
  bool write(FnState state, std::string_view action, const KeyboardDeviceSource* source);
  void rememberLeftover();
  bool holdsWhatWasLeft();
  void setScope(bool isLocal);
  void setLastKnownFnState(FnState state);
  std::optional<FnState> overrideOf(const std::optional<std::string>& bundleIdentifier) const;
  std::string appSuffix(std::string_view bundleIdentifier) const;
  std::string sourceSuffix(const KeyboardDeviceSource* source) const;

  static constexpr int maximumIOKitRetryCount = 3;

  const Uses use_;
  PreferenceEvidence evidence_{use_.fnStateController, use_.storedFnStates};
  HardwareCustody custody_{{.clock = use_.clock, .workspace = use_.workspace}};

  /// It has been launched: from now on what it finds may be somebody's choice.
  bool isInControl_ = false;
  /// It has yielded to a newer instance, or begun to quit.
  bool isLeaving_ = false;
  /// A newer instance has not waited for this one.
  bool isLeftBehind_ = false;
  bool isSessionActive_ = true;
  std::optional<FnState> lastKnownFnState_;
  bool isLocalScopeActive_ = false;
  /// The application that was frontmost at the last activation, or at launch.
  std::optional<std::string> lastActivatedBundleIdentifier_;
  /// What is in the hardware, unless it was chosen; absent when it was.
  std::optional<Leftover> leftover_;
  /// What Keyrow has last stored or seen in the store.
  StoredFnStates::All seenStore_;
  ObserverToken storeObserver_;
  MissingApplications missingApplications_{use_.workspace, use_.clock};
  /// Consecutive failed hardware reads.
  int IOKitRetryCount_ = 0;
  /// The session has just come back: what is in the hardware may be another user's.
  bool isSettling_ = false;
  DelayedCall secondLook_;
  /// The log has said that an administrator manages them.
  bool hasSaidGlobalIsManaged_ = false;
  bool hasSaidLocalsAreManaged_ = false;
  /// Each retry removes itself.
  std::list<DelayedCall> retries_;
};

}  // namespace keyrow
