#include "sim/ports/SimulatedGeneralView.h"

#include <algorithm>

#include "ui/GeneralLayout.h"

namespace keyrow::sim {

void SimulatedGeneralView::load() {
  if (isLoaded_) return;
  isLoaded_ = true;
  actions().viewDidLoad();
}

bool SimulatedGeneralView::click(std::string_view title) {
  namespace layout = generalLayout;
  std::function<void(GeneralActions&)> action;
  if (title == layout::loginItemTitle) {
    // A click changes a checkbox by itself; its action says what it stands at now.
    isLoginItemChecked = !isLoginItemChecked;
    action = [on = isLoginItemChecked](GeneralActions& actions) {
      actions.toggleLaunchAtLogin(on);
    };
  } else if (title == layout::capsLockIndicatorTitle) {
    isCapsLockIndicatorChecked = !isCapsLockIndicatorChecked;
    action = [on = isCapsLockIndicatorChecked](GeneralActions& actions) {
      actions.toggleCapsLockIndicator(on);
    };
  } else if (title == layout::externalFunctionKeysTitle) {
    isExternalFunctionKeysChecked = !isExternalFunctionKeysChecked;
    action = [on = isExternalFunctionKeysChecked](GeneralActions& actions) {
      actions.toggleExternalFunctionKeys(on);
    };
  } else if (title == layout::permissionButtonTitle) {
    action = [](GeneralActions& actions) { actions.openAccessibilityPermissions(); };
  } else if (title == layout::permissionHelpTitle) {
    action = [](GeneralActions& actions) { actions.showAXPermissionHelp(); };
  } else if (title == layout::resetTitle && isResetEnabled) {
    action = [](GeneralActions& actions) { actions.resetLocalShortcut(); };
  } else if (title == layout::quitTitle) {
    action = [](GeneralActions& actions) { actions.quitApp(); };
  } else if (title == localShortcutTitle) {
    action = [](GeneralActions& actions) { actions.toggleLocalShortcutCapture(); };
  } else {
    return false;
  }
  context_.mainThread->deliver([this, action] { action(actions()); });
  return true;
}

bool SimulatedGeneralView::chooseFnReplacement(std::string_view title) {
  const auto found = std::ranges::find_if(fnReplacementItems, [title](const auto& item) {
    return !item.isSeparator && item.title == title;
  });
  if (found == fnReplacementItems.end()) return false;
  selectedFnReplacementItem = static_cast<std::size_t>(found - fnReplacementItems.begin());
  context_.mainThread->deliver([this, raw = PropertyValue{found->representedObject}] {
    actions().changeFnReplacementModifier(raw);
  });
  return true;
}

}  // namespace keyrow::sim
