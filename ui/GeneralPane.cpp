#include "ui/GeneralPane.h"

#include <algorithm>
#include <string>

#include "core/NamedSettings.h"
#include "platform/KeyEvent.h"
#include "ui/GeneralLayout.h"
#include "ui/PermissionSettings.h"

namespace keyrow {

namespace {

/// Whether the main menu makes Close or Quit of it. Caps Lock may make a capital of the letter.
bool closesOrQuits(const KeyDown& key) {
  constexpr auto modifiers = keyEventFlag::shift | keyEventFlag::control | keyEventFlag::option |
                             keyEventFlag::command | keyEventFlag::secondaryFn;
  if ((key.flags & modifiers) != keyEventFlag::command) return false;
  const auto& letter = key.characters;
  return letter == "w" || letter == "W" || letter == "q" || letter == "Q";
}

}  // namespace

void GeneralPane::viewDidLoad() {
  use_.view.setFnReplacementItems(fnReplacementItems());
  showSettings();
  refreshPermission();
  activationObserver_ = use_.notificationCenter.addObserver(applicationDidBecomeActive, [this] {
    refreshPermission();
    showSettings();
  });
  settingsObserver_ =
      use_.notificationCenter.addObserver(settingWasSet, [this] { showSettings(); });
  permissionObserver_ =
      use_.notificationCenter.addObserver(permissionsWereLookedAt, [this] { refreshPermission(); });
}

void GeneralPane::viewWillAppear() { showSwitches(); }

// Only now it is certain how much room the texts have.
void GeneralPane::viewDidAppear() { refreshShortcutTexts(); }

// Only the hints change the height, and they turn on the modifier.
double GeneralPane::tallestHeight() {
  double tallest = use_.view.fittingHeight();
  for (const auto& item : fnReplacementItems()) {
    showHints(fnReplacementModifierFromRawValue(item.representedObject));
    tallest = std::max(tallest, use_.view.fittingHeight());
  }
  showHints(use_.settings.fnReplacementModifier());
  return tallest;
}

void GeneralPane::toggle(Switch what, bool isOn) {
  use_.switches.set(what, isOn);
  use_.view.setChecked(what, use_.switches.isOn(what));
}

void GeneralPane::changeFnReplacementModifier(
    const std::optional<PropertyValue>& representedObject) {
  const auto* raw = representedObject ? representedObject->string() : nullptr;
  use_.settings.setFnReplacementModifier(raw ? fnReplacementModifierFromRawValue(*raw)
                                             : std::nullopt);
  syncFnReplacementModifier();
}

void GeneralPane::toggleLocalShortcutCapture() {
  if (use_.shortcutCapture.isRunning()) {
    stopLocalShortcutCapture();
    return;
  }
  // Assistive technology can press the button in a window that gets no keys, and would never lose
  // them: nothing would end the capture then.
  use_.settingsWindowController.show();
  // Before the monitor is there: no key that it would see is swallowed on its way.
  use_.shortcutCapture.begin();
  refreshShortcutTexts();
  keyDownMonitor_ = use_.eventMonitors.addLocalKeyDownMonitor(
      [this](const KeyDown& key) { return keyDown(key); });
}

void GeneralPane::resetLocalShortcut() {
  stopLocalShortcutCapture();
  use_.settings.resetLocalToggleShortcut();
  refreshShortcutTexts();
}

void GeneralPane::openPermissions() {
  const auto missing = use_.permissions.missing();
  showPermission(missing);
  openPermissionSettings(settingsOf(missing), use_.workspace);
}

void GeneralPane::showAXPermissionHelp() {
  if (use_.view.isPermissionPopoverShown()) {
    use_.view.closePermissionPopover();
  } else {
    use_.view.showPermissionPopover();
  }
}

void GeneralPane::quitApp() { use_.application.terminate(); }

void GeneralPane::showSettings() {
  showSwitches();
  syncFnReplacementModifier();
  refreshShortcutTexts();
}

void GeneralPane::showSwitches() {
  for (const auto& checkbox : checkboxesOf(generalLayout::rows)) {
    use_.view.setChecked(checkbox.what, use_.switches.isOn(checkbox.what));
  }
}

void GeneralPane::syncFnReplacementModifier() {
  const auto modifier = use_.settings.fnReplacementModifier();
  use_.view.selectFnReplacementItem(fnReplacementItemIndex(modifier));
  showHints(modifier);
}

void GeneralPane::refreshShortcutTexts() {
  const auto shortcut = use_.settings.localToggleShortcut();
  const auto title =
      use_.shortcutCapture.isRunning() ? "Press any key..." : "Fn + " + shortcut.displayName;
  use_.view.setLocalShortcutTitle(title);
  use_.view.setLocalShortcutWholeTitle(
      use_.view.isLocalShortcutTitleCut() ? std::optional<std::string_view>{title} : std::nullopt);
  const auto standard = defaultLocalToggleShortcut();
  use_.view.setResetLocalShortcutEnabled(shortcut.keyCode != standard.keyCode ||
                                         shortcut.displayName != standard.displayName);
}

void GeneralPane::showHints(std::optional<FnReplacementModifier> modifier) {
  if (!modifier) {
    use_.view.setLocalShortcutHint(
        "Use Fn plus this key to create or toggle an app-specific Fn override for the frontmost "
        "app with a different Fn mode from the global setting.");
    use_.view.setFnReplacementHint(
        "Optional. Choose a modifier key to mirror Fn for Esc and the local app shortcut.");
    return;
  }
  const std::string name{displayName(*modifier)};
  use_.view.setLocalShortcutHint(
      "Use Fn or " + name +
      " plus this key to create or toggle an app-specific Fn override for the frontmost app. "
      "That app can use a different Fn mode from the global setting.");
  use_.view.setFnReplacementHint("Use " + name +
                                 " with Esc for the global shortcut, or with the local app "
                                 "shortcut above.");
}

void GeneralPane::refreshPermission() { showPermission(use_.permissions.missing()); }

void GeneralPane::showPermission(MissingPermission missing) {
  const auto title = settingsOf(missing).buttonTitle;
  switch (missing) {
    case MissingPermission::none:
      return use_.view.setPermission(
          title, PermissionColor::green,
          "Accessibility permission granted. Input Monitoring is managed separately.");
    case MissingPermission::accessibility:
      return use_.view.setPermission(
          title, PermissionColor::red,
          "Accessibility permission not granted. Input Monitoring may also be required.");
    case MissingPermission::inputMonitoring:
      return use_.view.setPermission(title, PermissionColor::red,
                                     "Input Monitoring permission not granted.");
  }
}

bool GeneralPane::keyDown(const KeyDown& key) {
  if (use_.shortcutCapture.isRunning()) return captureShortcut(key);
  // The key that was recorded is still held, and the window would beep at each of its repeats.
  if (key.isRepeat) return key.keyCode == recordedKeyCode_;
  keyDownMonitor_ = {};
  return false;
}

bool GeneralPane::captureShortcut(const KeyDown& key) {
  // It went down before it was asked for.
  if (key.isRepeat) return true;
  if (closesOrQuits(key)) {
    stopLocalShortcutCapture();
    return false;
  }
  if (key.keyCode == escapeKeyCode) {
    use_.alerts.beep();
    return true;
  }
  use_.settings.setLocalToggleShortcut(
      use_.settings.makeLocalToggleShortcut(key.keyCode, key.charactersIgnoringModifiers));
  recordedKeyCode_ = key.keyCode;
  use_.shortcutCapture.end();
  refreshShortcutTexts();
  return true;
}

void GeneralPane::stopLocalShortcutCapture() {
  keyDownMonitor_ = {};
  use_.shortcutCapture.end();
  refreshShortcutTexts();
}

}  // namespace keyrow
