#include "app/AppDelegate.h"

#include <utility>

#include "ui/AccessibilitySettings.h"

namespace keyrow {

namespace {

bool isSystemSettings(const std::optional<std::string>& bundleIdentifier) {
  return bundleIdentifier == "com.apple.systempreferences" ||
         bundleIdentifier == "com.apple.SystemSettings";
}

}  // namespace

void AppDelegate::applicationDidFinishLaunching() {
  use.instanceTakeover.registerInstanceTakeoverObserver();
  use.instanceTakeover.takeOverPreviousInstances();
  use.statusBarController.setUp();
  use.settingsWindowController.createWindow();
  use.updater.start();
  use.modePolicy.pruneLocalFnStates();
  use.keyboardSourceMonitor.startMonitoring();
  lastActivatedBundleIdentifier = use.workspace.frontmostBundleIdentifier();
  promptForAccessibilityIfNeeded();
  startEventTapIfPossible();
  installAppActivationObserver();
  wakeObserver = use.workspace.observeDidWake([this] { handleWake(); });
  sleepObserver = use.workspace.observeWillSleep([this] {
    use.fnStateController.persistStoredGlobalFnState(FnStatePersistReason::systemSleep);
  });
  use.capsLockMonitor.observeCapsLockIndicatorSetting();
  use.capsLockMonitor.applyCapsLockIndicatorSetting();
  installAppActiveObserver();
  use.modePolicy.applyStoredFnState();
}

void AppDelegate::applicationWillTerminate() {
  use.modePolicy.restoreGlobalFnState();
  use.capsLockMonitor.tearDownCapsLockMonitoring();
  use.eventTapController.stopEventTap();
  use.keyboardSourceMonitor.stopMonitoring();
  appActiveObserver = {};
  use.instanceTakeover.removeInstanceTakeoverObserver();
  use.modePolicy.pruneLocalFnStates();
  use.fnStateController.persistStoredGlobalFnState(FnStatePersistReason::applicationTermination);
}

bool AppDelegate::applicationShouldHandleReopen(bool /*hasVisibleWindows*/) {
  use.settingsWindowController.show();
  return true;
}

void AppDelegate::handleApplicationActivation() {
  syncAfterLeavingSystemSettings();
  syncFromHardware();
  use.modePolicy.applyStoredFnState();
  use.capsLockMonitor.refreshCapsLockIfEnabled();
}

void AppDelegate::syncAfterLeavingSystemSettings() {
  const auto frontmost = use.workspace.frontmostBundleIdentifier();
  const auto previous = std::exchange(lastActivatedBundleIdentifier, frontmost);
  if (!isSystemSettings(previous) || isSystemSettings(frontmost)) return;
  const auto hardware = use.modePolicy.currentFnState();
  if (hardware && !use.modePolicy.isLeftover(*hardware)) {
    use.modePolicy.syncStoredGlobalFnState(*hardware, false,
                                           "from hardware after leaving System Settings");
  }
}

void AppDelegate::syncFromHardware() {
  // While an override is in force the hardware holds the override's mode.
  if (use.modePolicy.isLocalScopeActive()) return;
  const auto hardware = use.modePolicy.currentFnState();
  if (hardware && hardware != use.storedFnStates.global() &&
      !use.modePolicy.isLeftover(*hardware)) {
    use.modePolicy.syncStoredGlobalFnState(*hardware, false, "from hardware during app switch");
  }
}

void AppDelegate::handleWake() {
  use.statusBarController.handleWake();
  use.capsLockMonitor.refreshCapsLockIfEnabled();
  // macOS can disable a tap during sleep without ever announcing it.
  if (eventTapStarted) use.eventTapController.reviveEventTap();
}

void AppDelegate::installAppActivationObserver() {
  activationObserver = use.workspace.observeActivation([this] { handleApplicationActivation(); });
}

void AppDelegate::installAppActiveObserver() {
  appActiveObserver = use.notificationCenter.addObserver(applicationDidBecomeActive,
                                                         [this] { startEventTapIfPossible(); });
}

void AppDelegate::startEventTapIfPossible() {
  if (eventTapStarted || !use.accessibility.isProcessTrusted()) return;
  if (!use.eventTapController.startEventTap()) {
    showEventTapFailureAlert();
    return;
  }
  eventTapStarted = true;
  hasShownEventTapFailureAlert = false;
}

void AppDelegate::showEventTapFailureAlert() {
  if (std::exchange(hasShownEventTapFailureAlert, true)) return;
  const auto response = use.alerts.runModal(
      {.messageText = "Keyrow could not start keyboard monitoring",
       .informativeText =
           "Keyrow may still be missing Input Monitoring, or macOS may not have applied its "
           "permissions yet. Try reopening Keyrow, or remove and re-add Keyrow in System Settings "
           "> Privacy & Security > Accessibility and Input Monitoring.",
       .buttons = {"Open Accessibility Settings", "OK"}});
  if (response == alertFirstButtonReturn) openAccessibilitySettings(use.workspace);
}

void AppDelegate::promptForAccessibilityIfNeeded() {
  const bool hasPrompted = use.settings.hasPromptedAccessibility();
  if (use.accessibility.isProcessTrusted()) {
    if (!hasPrompted) use.settings.setHasPromptedAccessibility();
    return;
  }
  use.settingsWindowController.show();
  if (hasPrompted) return;
  use.accessibility.promptForTrust();
  use.settings.setHasPromptedAccessibility();
}

}  // namespace keyrow
