#include "app/AppDelegate.h"

#include <utility>

namespace keyrow {

void AppDelegate::applicationDidFinishLaunching() {
  use_.instanceTakeover.registerInstanceTakeoverObserver();
  use_.modePolicy.willLaunch();
  use_.instanceTakeover.takeOverPreviousInstances();
  use_.mainMenuController.setUp();
  use_.statusBarController.setUp();
  use_.settingsWindowController.createWindow();
  use_.updater.start();
  use_.modePolicy.pruneLocalFnStates();
  if (use_.modePolicy.isSessionActive()) use_.keyboardMonitoring.start();
  promptForAccessibilityIfNeeded();
  if (use_.modePolicy.isSessionActive()) use_.eventTapKeeper.start();
  installAppActivationObserver();
  wakeObserver_ = use_.workspace.observeDidWake([this] { handleWake(); });
  sleepObserver_ = use_.workspace.observeWillSleep([this] { use_.modePolicy.willSleep(); });
  sessionResignObserver_ =
      use_.workspace.observeSessionDidResignActive([this] { handleSessionResign(); });
  sessionActivationObserver_ =
      use_.workspace.observeSessionDidBecomeActive([this] { handleSessionActivation(); });
  if (use_.modePolicy.isSessionActive()) {
    use_.capsLockMonitor.observeCapsLockIndicatorSetting();
    use_.capsLockMonitor.applyCapsLockIndicatorSetting();
  }
  installAppActiveObserver();
  use_.modePolicy.launched();
  use_.requestReceiver.start();
}

void AppDelegate::applicationWillTerminate() {
  use_.requestReceiver.stop();
  use_.modePolicy.willQuit();
  use_.capsLockMonitor.tearDownCapsLockMonitoring();
  use_.eventTapKeeper.stopAndWait();
  // Nothing of the main queue runs any more: what is down comes up here.
  use_.functionRowMapper.postWaitingKeys();
  use_.keyboardMonitoring.stop();
  appActiveObserver_ = {};
  trustObserver_ = {};
  use_.instanceTakeover.removeInstanceTakeoverObserver();
  use_.modePolicy.hasStopped();
}

bool AppDelegate::applicationShouldHandleReopen(bool /*hasVisibleWindows*/) {
  use_.settingsWindowController.show();
  return true;
}

void AppDelegate::handleApplicationActivation() {
  if (use_.modePolicy.isSessionActive()) use_.eventTapKeeper.look();
  if (use_.modePolicy.switchedApplication()) use_.keyboardMonitoring.permissionsMayHaveChanged();
  use_.capsLockMonitor.refreshCapsLockIfEnabled();
}

void AppDelegate::handleWake() {
  use_.modePolicy.didWake();
  use_.capsLockMonitor.refreshCapsLockIfEnabled();
  if (use_.modePolicy.isSessionActive()) use_.eventTapKeeper.lookClosely();
}

void AppDelegate::handleSessionResign() {
  if (!use_.modePolicy.isSessionActive()) return;
  use_.modePolicy.sessionResigned();
  use_.capsLockMonitor.tearDownCapsLockMonitoring();
  use_.eventTapKeeper.stop();
  use_.keyboardMonitoring.stop();
}

void AppDelegate::handleSessionActivation() {
  if (use_.modePolicy.isSessionActive()) return;
  use_.modePolicy.sessionBecameActive();
  use_.keyboardMonitoring.start();
  use_.capsLockMonitor.observeCapsLockIndicatorSetting();
  use_.capsLockMonitor.applyCapsLockIndicatorSetting();
  use_.eventTapKeeper.start();
}

void AppDelegate::installAppActivationObserver() {
  activationObserver_ = use_.workspace.observeActivation([this] { handleApplicationActivation(); });
}

void AppDelegate::installAppActiveObserver() {
  appActiveObserver_ = use_.notificationCenter.addObserver(applicationDidBecomeActive, [this] {
    if (!use_.modePolicy.isSessionActive()) return;
    use_.eventTapKeeper.look();
    use_.keyboardMonitoring.permissionsMayHaveChanged();
  });
  trustObserver_ = use_.notificationCenter.addObserver(accessibilityTrustDidChange, [this] {
    if (use_.modePolicy.isSessionActive()) use_.keyboardMonitoring.permissionsMayHaveChanged();
  });
}

void AppDelegate::promptForAccessibilityIfNeeded() {
  const bool hasPrompted = use_.settings.hasPromptedAccessibility();
  if (use_.accessibility.isProcessTrusted()) {
    if (!hasPrompted) use_.settings.setHasPromptedAccessibility();
    return;
  }
  use_.settingsWindowController.show();
  if (hasPrompted) return;
  use_.accessibility.promptForTrust();
  use_.settings.setHasPromptedAccessibility();
}

}  // namespace keyrow
