#include "sim/ports/SimulatedGeneralView.h"

#include <algorithm>
#include <utility>

#include "ui/GeneralLayout.h"

namespace keyrow::sim {

namespace layout = generalLayout;

void SimulatedGeneralView::setWindowKey(bool isKey) {
  const bool wasKey = std::exchange(isWindowKey_, isKey);
  if (!wasKey || isKey) return;
  context().mainThread->deliver([this] { actions().windowDidResignKey(); });
}

void SimulatedGeneralView::disappear() {
  context().mainThread->deliver([this] { actions().viewWillDisappear(); });
}

bool SimulatedGeneralView::chooseFnReplacement(std::string_view title) {
  const auto found = std::ranges::find_if(fnReplacementItems, [title](const auto& item) {
    return !item.isSeparator && item.title == title;
  });
  if (found == fnReplacementItems.end()) return false;
  selectedFnReplacementItem = static_cast<std::size_t>(found - fnReplacementItems.begin());
  context().mainThread->deliver([this, raw = PropertyValue{found->representedObject}] {
    actions().changeFnReplacementModifier(raw);
  });
  return true;
}

std::vector<SimulatedGeneralView::Clickable> SimulatedGeneralView::clickables() const {
  std::vector<Clickable> result;
  for (const auto& row : layout::rows) {
    if (const auto* checkbox = std::get_if<Checkbox>(&row.what)) {
      result.push_back(clickable(*checkbox));
    }
    const auto* control = std::get_if<layout::Control>(&row.what);
    if (!control) continue;
    switch (*control) {
      case layout::Control::permissionStack:
        result.push_back(clickable(permissionButtonTitle, &GeneralActions::openPermissions));
        result.push_back(
            clickable(layout::permissionHelpTitle, &GeneralActions::showAXPermissionHelp));
        break;
      case layout::Control::localShortcut:
        result.push_back(
            clickable(localShortcutTitle, &GeneralActions::toggleLocalShortcutCapture));
        result.push_back(
            clickable(layout::resetTitle, &GeneralActions::resetLocalShortcut, isResetEnabled));
        break;
      case layout::Control::localShortcutHint:
      case layout::Control::fnReplacement:
      case layout::Control::fnReplacementHint:
        break;
    }
  }
  result.push_back(clickable(layout::quitTitle, &GeneralActions::quitApp));
  return result;
}

}  // namespace keyrow::sim
