#pragma once

#include "app/AppDelegate.h"
#include "app/DiagnosticsLog.h"
#include "app/EventTapKeeper.h"
#include "app/InstanceTakeover.h"
#include "app/RequestReceiver.h"
#include "app/StatusReport.h"
#include "core/AppSettings.h"
#include "core/Commands.h"
#include "core/FnStateController.h"
#include "core/KeyboardFnStates.h"
#include "core/ModePolicy.h"
#include "core/NamedSettings.h"
#include "core/StoredFnStates.h"
#include "input/CapsLockMonitor.h"
#include "input/ExternalKeyboardFunctionRowMapper.h"
#include "input/KeyEventHandler.h"
#include "input/KeySettings.h"
#include "input/KeyboardEventTapController.h"
#include "input/KeyboardModes.h"
#include "input/KeyboardSourceMonitor.h"
#include "input/Permissions.h"
#include "input/ShortcutCapture.h"
#include "platform/Platform.h"
#include "ui/AboutPane.h"
#include "ui/BugReport.h"
#include "ui/GeneralPane.h"
#include "ui/MainMenuController.h"
#include "ui/SettingsWindowController.h"
#include "ui/SparkleUpdater.h"
#include "ui/StatusBarController.h"
#include "ui/Switches.h"
#include "ui/Views.h"

namespace keyrow {

/// The composition root: all long-lived objects of one process, made in the order of
/// their dependencies and kept as long as the process lives. Where two need each other,
/// the first only keeps a reference to the second until both are there.
class Keyrow {
 public:
  Keyrow(const Platform& platform, const Views& views);

  // The simulated Mac and tests look at all of these, a Mac only at the last.

  DiagnosticsLog& diagnosticsLog() { return diagnosticsLog_; }
  AppSettings& settings() { return settings_; }
  FnStateController& fnStateController() { return fnStateController_; }
  ModePolicy& modePolicy() { return modePolicy_; }
  KeyboardSourceMonitor& keyboardSourceMonitor() { return keyboardSourceMonitor_; }
  KeySettings& keySettings() { return keySettings_; }
  KeyboardModes& keyboardModes() { return keyboardModes_; }
  ExternalKeyboardFunctionRowMapper& functionRowMapper() { return functionRowMapper_; }
  /// A handler of key events, as each tap gets one of its own.
  std::shared_ptr<KeyEventHandler> makeKeyEventHandler();
  KeyboardEventTapController& eventTapController() { return eventTapController_; }
  SettingsWindowController& settingsWindowController() { return settingsWindowController_; }
  CapsLockMonitor& capsLockMonitor() { return capsLockMonitor_; }
  KeyboardMonitoring& keyboardMonitoring() { return keyboardMonitoring_; }
  SparkleUpdater& updater() { return updater_; }
  StatusBarController& statusBarController() { return statusBarController_; }
  AppDelegate& appDelegate() { return appDelegate_; }

 private:
  double tallestPane();

  /// macOS would nap an application that shows nothing, and keys wait for this one.
  const Registration activity_;
  DiagnosticsLog diagnosticsLog_;
  AppSettings settings_;
  Permissions permissions_;
  StoredFnStates storedFnStates_;
  KeyboardFnStates keyboardFnStates_;
  FnStateController fnStateController_;
  SettingsWindowController settingsWindowController_;
  StatusBarController statusBarController_;
  ModePolicy modePolicy_;
  KeyboardSourceMonitor keyboardSourceMonitor_;
  KeySettings keySettings_;
  KeyboardModes keyboardModes_;
  ShortcutCapture shortcutCapture_;
  ExternalKeyboardFunctionRowMapper functionRowMapper_;
  MainQueue& mainQueue_;
  KeyboardEventTapController eventTapController_;
  EventTapKeeper eventTapKeeper_;
  CapsLockMonitor capsLockMonitor_;
  KeyboardMonitoring keyboardMonitoring_;
  SparkleUpdater updater_;
  BugReport bugReport_;
  Switches switches_;
  GeneralPane generalPane_;
  AboutPane aboutPane_;
  MainMenuController mainMenuController_;
  InstanceTakeover instanceTakeover_;
  NamedSettings namedSettings_;
  Commands commands_;
  StatusReport statusReport_;
  RequestReceiver requestReceiver_;
  AppDelegate appDelegate_;
};

}  // namespace keyrow
