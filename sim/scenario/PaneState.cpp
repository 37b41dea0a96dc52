#include "sim/scenario/PaneState.h"

namespace keyrow::sim {

namespace {

std::string onOrOff(bool isOn) { return isOn ? "on" : "off"; }

}  // namespace

std::vector<std::pair<std::string, std::string>> paneState(SimulatedPlatform& platform) {
  const auto& general = platform.general;
  const auto& about = platform.about;
  std::string replacement;
  if (general.selectedFnReplacementItem < general.fnReplacementItems.size()) {
    replacement = general.fnReplacementItems[general.selectedFnReplacementItem].title;
  }
  return {{"permission", general.permissionColor == PermissionColor::green ? "green" : "red"},
          {"permission-tip", general.permissionToolTip},
          {"permission-help", general.isPopoverShown ? "shown" : "closed"},
          {"login-item", onOrOff(general.isLoginItemChecked)},
          {"caps-lock-indicator", onOrOff(general.isCapsLockIndicatorChecked)},
          {"external-keys", onOrOff(general.isExternalFunctionKeysChecked)},
          {"shortcut", general.localShortcutTitle},
          {"reset", general.isResetEnabled ? "enabled" : "disabled"},
          {"shortcut-hint", general.localShortcutHint},
          {"replacement", replacement},
          {"replacement-hint", general.fnReplacementHint},
          {"version", about.version},
          {"diagnostics", onOrOff(about.isEnhancedDiagnosticsChecked)},
          {"auto-update", onOrOff(about.isAutoUpdateChecked)}};
}

std::vector<std::string> controlTitles(SimulatedPlatform& platform) {
  (void)platform;
  return {};
}

}  // namespace keyrow::sim
