#pragma once

#include "app/EventTapKeeper.h"
#include "app/InstanceTakeover.h"
#include "app/RequestReceiver.h"
#include "core/AppSettings.h"
#include "core/ModePolicy.h"
#include "input/CapsLockMonitor.h"
#include "input/ExternalKeyboardFunctionRowMapper.h"
#include "input/KeyboardMonitoring.h"
#include "platform/Accessibility.h"
#include "platform/NotificationCenter.h"
#include "platform/Workspace.h"
#include "ui/MainMenuController.h"
#include "ui/SettingsWindowController.h"
#include "ui/SparkleUpdater.h"
#include "ui/StatusBarController.h"

namespace keyrow {

/// Starts and stops what Keyrow is made of, each in its order, and follows the frontmost
/// application. Main thread only.
class AppDelegate {
 public:
  /// What it starts, stops and uses.
  struct Uses {
    ModePolicy& modePolicy;
    AppSettings& settings;
    KeyboardMonitoring& keyboardMonitoring;
    EventTapKeeper& eventTapKeeper;
    ExternalKeyboardFunctionRowMapper& functionRowMapper;
    CapsLockMonitor& capsLockMonitor;
    StatusBarController& statusBarController;
    SettingsWindowController& settingsWindowController;
    MainMenuController& mainMenuController;
    SparkleUpdater& updater;
    InstanceTakeover& instanceTakeover;
    RequestReceiver& requestReceiver;
    Accessibility& accessibility;
    NotificationCenter& notificationCenter;
    Workspace& workspace;
  };

  explicit AppDelegate(const Uses& uses) : use_{uses} {}

  /// The launch sequence (`applicationDidFinishLaunching:`).
  void applicationDidFinishLaunching();

  /// The termination sequence (`applicationWillTerminate:`): leaves the keyboard, and
  /// the system preference, in the user's global mode.
  void applicationWillTerminate();

  /// Keyrow was opened while it runs (`applicationShouldHandleReopen:hasVisibleWindows:`):
  /// shows the settings window. Gives whether AppKit is to go on as usual.
  bool applicationShouldHandleReopen(bool hasVisibleWindows);

  /// `applicationSupportsSecureRestorableState:`.
  bool applicationSupportsSecureRestorableState() const { return true; }

 private:
  void handleApplicationActivation();
  void handleWake();
  void handleSessionResign();
  void handleSessionActivation();
  void installAppActivationObserver();
  void installAppActiveObserver();
  void promptForAccessibilityIfNeeded();

  const Uses use_;

  ObserverToken appActiveObserver_;
  ObserverToken trustObserver_;
  ObserverToken activationObserver_;
  ObserverToken wakeObserver_;
  ObserverToken sleepObserver_;
  ObserverToken sessionResignObserver_;
  ObserverToken sessionActivationObserver_;
};

}  // namespace keyrow
