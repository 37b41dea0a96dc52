#include "ui/StatusBarController.h"

namespace keyrow {

namespace {

std::optional<FnState> stateOf(const std::optional<PropertyValue>& representedObject) {
  const auto* raw = representedObject ? representedObject->integer() : nullptr;
  return raw ? fnStateFromRawValue(*raw) : std::nullopt;
}

}  // namespace

void StatusBarController::setUp() {
  statusItem_.create(*this);
  modePolicy_.setPresenter(this);
  updateScopeIndicator();
  setCapsLockIndicatorEnabled(settings_.showCapsLockIndicator());
  modePolicy_.refreshFromHardware();
}

void StatusBarController::fnSwitch() {
  if (modePolicy_.isLocalScopeActive()) {
    modePolicy_.toggleLocalOverride(nullptr);
  } else {
    modePolicy_.toggleGlobalFnState(nullptr);
  }
}

void StatusBarController::toggleLocal() { modePolicy_.toggleLocalOverride(nullptr); }

void StatusBarController::handleWake() {
  modePolicy_.refreshFromHardware();
  modePolicy_.applyStoredFnState();
}

void StatusBarController::setCapsLockIndicatorEnabled(bool enabled) {
  lastCapsLockLockedState_.reset();
  if (enabled) {
    updateCapsLockIndicator();
  } else {
    hideCapsLockIndicator();
  }
}

void StatusBarController::updateCapsLockIndicator() {
  if (!settings_.showCapsLockIndicator()) {
    hideCapsLockIndicator();
    return;
  }
  auto isLocked = capsLockMonitor_.cachedCapsLockState();
  if (!isLocked) isLocked = capsLockMonitor_.systemCapsLockState();
  if (!isLocked || isLocked == lastCapsLockLockedState_) return;
  lastCapsLockLockedState_ = isLocked;
  statusItem_.setCapsLockIndicatorHidden(!*isLocked);
  isCapsLockIndicatorVisible_ = *isLocked;
  updateScopeIndicator();
}

void StatusBarController::fnStateDidChange(FnState state) { updateStatusImage(state); }

void StatusBarController::scopeDidChange(bool /*isLocalScopeActive*/) { updateScopeIndicator(); }

void StatusBarController::statusBarButtonClicked(ClickEvent event) {
  if (event == ClickEvent::leftMouseUp) fnSwitch();
  if (event == ClickEvent::rightMouseDown) popUpMenu();
}

void StatusBarController::handleMenuGlobalSwitch(
    const std::optional<PropertyValue>& representedObject) {
  if (const auto state = stateOf(representedObject)) modePolicy_.setGlobalFnState(*state, nullptr);
}

void StatusBarController::handleMenuLocalSwitch(
    const std::optional<PropertyValue>& representedObject) {
  const auto state = stateOf(representedObject);
  if (!state) return;
  if (const auto frontmost = workspace_.frontmostBundleIdentifier()) {
    modePolicy_.setLocalFnState(*state, *frontmost, nullptr);
  }
}

void StatusBarController::openPreferences() { shouldOpenSettingsAfterMenuClose_ = true; }

void StatusBarController::quit() { application_.terminate(); }

void StatusBarController::menuDidClose() {
  mainQueue_.async([this] { afterMenu(); });
}

void StatusBarController::updateStatusImage(FnState state) {
  statusItem_.setImage(state == FnState::standard ? "fn" : "globe");
  updateCapsLockIndicator();
}

void StatusBarController::updateScopeIndicator() {
  if (modePolicy_.isLocalScopeActive()) {
    // Both indicators have the same place; Caps Lock wins it.
    statusItem_.setScopeIndicator(isCapsLockIndicatorVisible_, "Local F-Key Mode");
  } else {
    statusItem_.setScopeIndicator(true, std::nullopt);
  }
}

void StatusBarController::hideCapsLockIndicator() {
  statusItem_.setCapsLockIndicatorHidden(true);
  isCapsLockIndicatorVisible_ = false;
  updateScopeIndicator();
}

void StatusBarController::popUpMenu() {
  const auto defaultState = [this] {
    const auto stored = modePolicy_.storedGlobalFnState();
    return stored ? stored : modePolicy_.currentFnState();
  };
  StatusMenuState state;
  state.globalBase = defaultState();

  const auto frontmost = workspace_.frontmostBundleIdentifier();
  state.hasFrontmostApplication = frontmost.has_value();
  if (frontmost) state.localBase = storedFnStates_.local(*frontmost);
  if (!state.localBase) state.localBase = defaultState();

  state.shortcutKey = settings_.localToggleShortcut().displayName;
  state.fnReplacementModifier = settings_.fnReplacementModifier();

  statusItem_.setHighlighted(true);
  statusItem_.popUpMenu(makeStatusMenu(state));
}

void StatusBarController::afterMenu() {
  statusItem_.setHighlighted(false);
  if (!shouldOpenSettingsAfterMenuClose_) return;
  shouldOpenSettingsAfterMenuClose_ = false;
  settingsWindowController_.show();
}

}  // namespace keyrow
