#include "sim/scenario/PaneState.h"

#include "ui/AboutLayout.h"
#include "ui/GeneralLayout.h"

namespace keyrow::sim {

std::vector<std::pair<std::string, std::string>> paneState(SimulatedPlatform& platform) {
  const auto& general = platform.general;
  const auto& about = platform.about;
  std::string replacement;
  if (general.selectedFnReplacementItem < general.fnReplacementItems.size()) {
    replacement = general.fnReplacementItems[general.selectedFnReplacementItem].title;
  }
  std::vector<std::pair<std::string, std::string>> state{
      {"permission", general.permissionColor == PermissionColor::green ? "green" : "red"},
      {"permission-button", general.permissionButtonTitle},
      {"permission-tip", general.permissionToolTip},
      {"permission-help", general.isPopoverShown ? "shown" : "closed"},
      {"shortcut", general.localShortcutTitle},
      {"shortcut-tip", general.localShortcutTip.empty() ? "none" : general.localShortcutTip},
      {"reset", general.isResetEnabled ? "enabled" : "disabled"},
      {"shortcut-hint", general.localShortcutHint},
      {"replacement", replacement},
      {"replacement-hint", general.fnReplacementHint},
      {"version", about.version}};
  const auto add = [&state](const auto& pane, const auto& rows) {
    for (const auto& checkbox : checkboxesOf(rows)) {
      state.emplace_back(checkbox.name, pane.isChecked(checkbox.what) ? "on" : "off");
    }
  };
  add(general, generalLayout::rows);
  add(about, aboutLayout::rows);
  return state;
}

bool isGeneralSelected(SimulatedPlatform& platform) {
  return platform.settingsWindow.selectedTab().title == settingsTabs[0].title;
}

std::vector<SimulatedControl> openControls(SimulatedPlatform& platform) {
  return isGeneralSelected(platform) ? platform.general.controls() : platform.about.controls();
}

}  // namespace keyrow::sim
