#include "sim/ports/SimulatedGeneralView.h"

#include <algorithm>

#include "ui/GeneralLayout.h"

namespace keyrow::sim {

void SimulatedGeneralView::load() {
  if (isLoaded_) return;
  isLoaded_ = true;
  pane_->viewDidLoad();
}

bool SimulatedGeneralView::click(std::string_view title) {
  namespace layout = generalLayout;
  std::function<void(GeneralPane&)> action;
  if (title == layout::loginItemTitle) {
    // A click changes a checkbox by itself; its action says what it stands at now.
    isLoginItemChecked = !isLoginItemChecked;
    action = [on = isLoginItemChecked](GeneralPane& pane) { pane.toggleLaunchAtLogin(on); };
  } else if (title == layout::capsLockIndicatorTitle) {
    isCapsLockIndicatorChecked = !isCapsLockIndicatorChecked;
    action = [on = isCapsLockIndicatorChecked](GeneralPane& pane) {
      pane.toggleCapsLockIndicator(on);
    };
  } else if (title == layout::externalFunctionKeysTitle) {
    isExternalFunctionKeysChecked = !isExternalFunctionKeysChecked;
    action = [on = isExternalFunctionKeysChecked](GeneralPane& pane) {
      pane.toggleExternalFunctionKeys(on);
    };
  } else if (title == layout::permissionButtonTitle) {
    action = [](GeneralPane& pane) { pane.openAccessibilityPermissions(); };
  } else if (title == layout::permissionHelpTitle) {
    action = [](GeneralPane& pane) { pane.showAXPermissionHelp(); };
  } else if (title == layout::resetTitle && isResetEnabled) {
    action = [](GeneralPane& pane) { pane.resetLocalShortcut(); };
  } else if (title == layout::quitTitle) {
    action = [](GeneralPane& pane) { pane.quitApp(); };
  } else if (title == localShortcutTitle) {
    action = [](GeneralPane& pane) { pane.toggleLocalShortcutCapture(); };
  } else {
    return false;
  }
  context_.mainThread->deliver([this, action] { action(*pane_); });
  return true;
}

bool SimulatedGeneralView::chooseFnReplacement(std::string_view title) {
  const auto found = std::ranges::find_if(fnReplacementItems, [title](const auto& item) {
    return !item.isSeparator && item.title == title;
  });
  if (found == fnReplacementItems.end()) return false;
  selectedFnReplacementItem = static_cast<std::size_t>(found - fnReplacementItems.begin());
  context_.mainThread->deliver([this, raw = PropertyValue{found->representedObject}] {
    pane_->changeFnReplacementModifier(raw);
  });
  return true;
}

}  // namespace keyrow::sim
