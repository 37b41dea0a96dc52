#include "ui/StatusBarController.h"

#include <utility>

namespace keyrow {

namespace {

std::optional<FnState> stateOf(const std::optional<PropertyValue>& representedObject) {
  const auto* raw = representedObject ? representedObject->integer() : nullptr;
  return raw ? fnStateFromRawValue(*raw) : std::nullopt;
}

}  // namespace

void StatusBarController::setUp() {
  use_.view.create();
  updateScopeIndicator();
  // What was told while there was no item yet is lost.
  accessibilityValue_.clear();
  updateAccessibilityValue();
  setCapsLockIndicatorEnabled(use_.settings.isOn(BooleanSetting::showCapsLockIndicator));
  use_.modePolicy.refreshFromHardware();
}

void StatusBarController::fnSwitch() { use_.modePolicy.clicked(); }

void StatusBarController::toggleLocal() { use_.modePolicy.toggleLocalOverride(nullptr); }

void StatusBarController::setCapsLockIndicatorEnabled(bool enabled) {
  lastCapsLockLockedState_.reset();
  if (enabled) {
    updateCapsLockIndicator();
  } else {
    hideCapsLockIndicator();
  }
}

void StatusBarController::updateCapsLockIndicator() {
  if (!use_.settings.isOn(BooleanSetting::showCapsLockIndicator)) {
    hideCapsLockIndicator();
    return;
  }
  auto isLocked = use_.capsLockMonitor.cachedCapsLockState();
  if (!isLocked) isLocked = use_.capsLockMonitor.systemCapsLockState();
  if (!isLocked || isLocked == lastCapsLockLockedState_) return;
  lastCapsLockLockedState_ = isLocked;
  use_.view.setCapsLockIndicatorHidden(!*isLocked);
  isCapsLockIndicatorVisible_ = *isLocked;
  updateScopeIndicator();
}

void StatusBarController::fnStateDidChange(FnState state) {
  updateStatusImage(state);
  updateAccessibilityValue();
}

void StatusBarController::scopeDidChange(bool /*isLocalScopeActive*/) {
  updateScopeIndicator();
  updateAccessibilityValue();
}

void StatusBarController::commandWorked() { use_.view.announce(accessibilityValue_); }

// Whatever asks for no menu counts as a click. VoiceOver's own keys hold Control, too.
void StatusBarController::statusBarButtonClicked(ClickEvent event, bool isControlHeld) {
  const bool isControlClick = event == ClickEvent::leftMouseUp && isControlHeld;
  if (event == ClickEvent::rightMouseDown || isControlClick) {
    popUpMenu();
  } else {
    fnSwitch();
  }
}

// Whoever asks waits for the answer, and a menu stays open as long as the user likes. What is asked
// while it is open would open it again.
void StatusBarController::showMenu() {
  if (isMenuOpen_ || std::exchange(isMenuComing_, true)) return;
  use_.mainRunLoop.perform([this] {
    if (isMenuComing_) popUpMenu();
  });
}

void StatusBarController::handleMenuGlobalSwitch(
    const std::optional<PropertyValue>& representedObject) {
  if (const auto state = stateOf(representedObject))
    use_.modePolicy.setGlobalFnState(*state, nullptr);
}

void StatusBarController::handleMenuLocalSwitch(
    const std::optional<PropertyValue>& representedObject) {
  const auto state = stateOf(representedObject);
  if (!state) return;
  if (const auto frontmost = use_.workspace.frontmostBundleIdentifier()) {
    use_.modePolicy.setLocalFnState(*state, *frontmost, nullptr);
  }
}

void StatusBarController::openPreferences() { shouldOpenSettingsAfterMenuClose_ = true; }

void StatusBarController::quit() { use_.application.terminate(); }

void StatusBarController::menuDidClose() {
  isMenuOpen_ = false;
  use_.mainQueue.async([this] { afterMenu(); });
}

void StatusBarController::updateStatusImage(FnState state) {
  use_.view.setImage(state == FnState::standard ? "fn" : "globe");
  updateCapsLockIndicator();
}

void StatusBarController::updateScopeIndicator() {
  if (use_.modePolicy.isLocalScopeActive()) {
    // Both indicators have the same place; Caps Lock wins it.
    use_.view.setScopeIndicator(isCapsLockIndicatorVisible_, "Local F-Key Mode");
  } else {
    use_.view.setScopeIndicator(true, std::nullopt);
  }
}

void StatusBarController::updateAccessibilityValue() {
  const auto mode = use_.modePolicy.lastKnownFnState();
  if (!mode) return;
  auto value = std::string{*mode == FnState::standard ? "Standard function keys"
                                                      : "Media and system controls"} +
               (use_.modePolicy.isLocalScopeActive() ? " in this app only" : " by default");
  if (value == accessibilityValue_) return;
  accessibilityValue_ = std::move(value);
  use_.view.setAccessibilityValue(accessibilityValue_);
}

void StatusBarController::hideCapsLockIndicator() {
  // When the setting is on again, whatever the state is has to be shown.
  lastCapsLockLockedState_.reset();
  use_.view.setCapsLockIndicatorHidden(true);
  isCapsLockIndicatorVisible_ = false;
  updateScopeIndicator();
}

void StatusBarController::popUpMenu() {
  isMenuComing_ = false;
  isMenuOpen_ = true;
  const auto modes = use_.modePolicy.menuOpens();
  StatusMenuState state;
  state.globalBase = modes.global;
  state.localBase = modes.local;
  state.hasFrontmostApplication = modes.hasFrontmostApplication;
  state.isGlobalManaged = modes.isGlobalManaged;
  state.isLocalManaged = modes.isLocalManaged;
  state.shortcutKey = use_.settings.localToggleShortcut().displayName;
  state.fnReplacementModifier = use_.settings.fnReplacementModifier();

  use_.view.setHighlighted(true);
  use_.view.popUpMenu(makeStatusMenu(state));
}

void StatusBarController::afterMenu() {
  use_.view.setHighlighted(false);
  // The menu had all keys for itself.
  use_.capsLockMonitor.refreshCapsLockIfEnabled();
  if (!shouldOpenSettingsAfterMenuClose_) return;
  shouldOpenSettingsAfterMenuClose_ = false;
  use_.settingsWindowController.show();
}

}  // namespace keyrow
