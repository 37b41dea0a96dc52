#include "ui/GeneralPane.h"

#include <string>

#include "ui/AccessibilitySettings.h"

namespace keyrow {

void GeneralPane::viewDidLoad() {
  use.view.setLoginItemChecked(use.loginItem.isEnabled());
  use.view.setCapsLockIndicatorChecked(use.settings.showCapsLockIndicator());
  use.view.setExternalFunctionKeysChecked(use.settings.applyFnModeToExternalFunctionKeys());
  use.view.setFnReplacementItems(fnReplacementItems());
  syncFnReplacementModifier();
  refreshShortcutTexts();
  refreshPermissionIndicator();
  axPermissionObserver = use.notificationCenter.addObserver(
      applicationDidBecomeActive, [this] { refreshPermissionIndicator(); });
}

void GeneralPane::toggleLaunchAtLogin(bool isOn) {
  if (isOn) {
    use.loginItem.registerItem();
  } else {
    use.loginItem.unregisterItem();
  }
  use.view.setLoginItemChecked(use.loginItem.isEnabled());
}

void GeneralPane::toggleCapsLockIndicator(bool isOn) {
  use.settings.setShowCapsLockIndicator(isOn);
  use.view.setCapsLockIndicatorChecked(use.settings.showCapsLockIndicator());
}

void GeneralPane::toggleExternalFunctionKeys(bool isOn) {
  use.settings.setApplyFnModeToExternalFunctionKeys(isOn);
  use.view.setExternalFunctionKeysChecked(use.settings.applyFnModeToExternalFunctionKeys());
}

void GeneralPane::changeFnReplacementModifier(
    const std::optional<PropertyValue>& representedObject) {
  const auto* raw = representedObject ? representedObject->string() : nullptr;
  use.settings.setFnReplacementModifier(raw ? fnReplacementModifierFromRawValue(*raw)
                                            : std::nullopt);
  syncFnReplacementModifier();
  refreshShortcutTexts();
}

void GeneralPane::toggleLocalShortcutCapture() {
  if (isCapturingLocalShortcut) {
    stopLocalShortcutCapture();
    return;
  }
  isCapturingLocalShortcut = true;
  refreshShortcutTexts();
  shortcutCaptureMonitor = use.eventMonitors.addLocalKeyDownMonitor(
      [this](const KeyDown& key) { return captureShortcut(key); });
}

void GeneralPane::resetLocalShortcut() {
  stopLocalShortcutCapture();
  use.settings.resetLocalToggleShortcut();
  refreshShortcutTexts();
}

void GeneralPane::openAccessibilityPermissions() { openAccessibilitySettings(use.workspace); }

void GeneralPane::showAXPermissionHelp() {
  if (use.view.isPermissionPopoverShown()) {
    use.view.closePermissionPopover();
  } else {
    use.view.showPermissionPopover();
  }
}

void GeneralPane::quitApp() { use.application.terminate(); }

void GeneralPane::syncFnReplacementModifier() {
  const auto modifier = use.settings.fnReplacementModifier();
  use.view.selectFnReplacementItem(fnReplacementItemIndex(modifier));
  if (modifier) {
    use.view.setFnReplacementHint("Use " + std::string{displayName(*modifier)} +
                                  " with Esc for the global shortcut, or with the local app "
                                  "shortcut above.");
  } else {
    use.view.setFnReplacementHint(
        "Optional. Choose a modifier key to mirror Fn for Esc and the local app shortcut.");
  }
}

void GeneralPane::refreshShortcutTexts() {
  const auto shortcut = use.settings.localToggleShortcut();
  use.view.setLocalShortcutTitle(isCapturingLocalShortcut ? "Press any key..."
                                                          : "Fn + " + shortcut.displayName);
  const auto standard = defaultLocalToggleShortcut();
  use.view.setResetLocalShortcutEnabled(shortcut.keyCode != standard.keyCode ||
                                        shortcut.displayName != standard.displayName);
  if (const auto modifier = use.settings.fnReplacementModifier()) {
    use.view.setLocalShortcutHint(
        "Use Fn or " + std::string{displayName(*modifier)} +
        " plus this key to create or toggle an app-specific Fn override for the frontmost app. "
        "That app can use a different Fn mode from the global setting.");
  } else {
    use.view.setLocalShortcutHint(
        "Use Fn plus this key to create or toggle an app-specific Fn override for the frontmost "
        "app with a different Fn mode from the global setting.");
  }
}

void GeneralPane::refreshPermissionIndicator() {
  if (use.accessibility.isProcessTrusted()) {
    use.view.setPermissionIndicator(
        PermissionColor::green,
        "Accessibility permission granted. Input Monitoring is managed separately.");
  } else {
    use.view.setPermissionIndicator(
        PermissionColor::red,
        "Accessibility permission not granted. Input Monitoring may also be required.");
  }
}

bool GeneralPane::captureShortcut(const KeyDown& key) {
  if (key.keyCode == escapeKeyCode) {
    use.alerts.beep();
    return true;
  }
  use.settings.setLocalToggleShortcut(
      use.settings.makeLocalToggleShortcut(key.keyCode, key.charactersIgnoringModifiers));
  stopLocalShortcutCapture();
  return true;
}

void GeneralPane::stopLocalShortcutCapture() {
  shortcutCaptureMonitor = {};
  isCapturingLocalShortcut = false;
  refreshShortcutTexts();
}

}  // namespace keyrow
