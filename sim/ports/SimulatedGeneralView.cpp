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

void SimulatedGeneralView::appear() {
  SimulatedPane::appear();
  isInWindow_ = true;
  actions().viewDidAppear();
}

void SimulatedGeneralView::disappear() {
  isInWindow_ = false;
  context().mainThread->deliver([this] { actions().viewWillDisappear(); });
}

double SimulatedGeneralView::neededHeight() const {
  const double buttonHeight = context().mac.pushButtonExtent;
  const auto heightOf = [&](layout::Control control) {
    switch (control) {
      case layout::Control::permissionStack:
        return buttonHeight;
      case layout::Control::localShortcut:
      case layout::Control::fnReplacement:
        break;
      case layout::Control::localShortcutHint:
        return heightOfHint(localShortcutHint, layout::hintMaximumLines);
      case layout::Control::fnReplacementHint:
        return heightOfHint(fnReplacementHint, layout::hintMaximumLines);
    }
    // The row begins with a label, and what is beside it stands out above and below.
    return SystemFont::lineHeight(FontSize::system);
  };
  return heightOfRows(layout::rows, layout::hintMaximumLines, heightOf) +
         layout::minimumGapAboveQuit + buttonHeight + layout::quitBottomGap;
}

double SimulatedGeneralView::popoverHeight() const {
  const auto lines = context().mac.systemFont.lineCount(layout::popoverText, FontSize::system,
                                                        layout::popoverLabelWidth);
  return SystemFont::lineHeight(FontSize::system) * lines + 2 * layout::popoverInset;
}

double SimulatedGeneralView::widthOfButton(std::string_view title) const {
  return context().mac.systemFont.textWidth(title, FontSize::system) +
         context().mac.pushButtonExtent;
}

bool SimulatedGeneralView::isLocalShortcutTitleCut() {
  if (!isInWindow_) return false;
  const double label =
      context().mac.systemFont.textWidth(layout::localShortcutTitle, FontSize::system);
  const double room = paneTextWidth - label - layout::minimumGapAfterLabel -
                      layout::gapBeforeReset - widthOfButton(layout::resetTitle);
  return widthOfButton(localShortcutTitle) > std::min(room, layout::localShortcutMaximumWidth);
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
