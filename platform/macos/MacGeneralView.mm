#include "platform/macos/MacGeneralView.h"

#include "platform/macos/Controls.h"
#include "platform/macos/Conversions.h"
#include "ui/GeneralLayout.h"

namespace keyrow::macos {

GeneralViewController* MacGeneralView::viewController() {
  if (!controller_) controller_ = [[GeneralViewController alloc] initWithActions:actions()];
  return controller_;
}

double MacGeneralView::fittingHeight() { return viewController().view.fittingSize.height; }

void MacGeneralView::setChecked(Switch what, bool checked) {
  setOn([controller_ checkboxOf:what], checked);
}

void MacGeneralView::setFnReplacementItems(std::span<const FnReplacementItem> items) {
  NSMenu* const menu = controller_.fnReplacementModifierPopup.menu;
  [menu removeAllItems];
  for (const auto& item : items) {
    if (item.isSeparator) {
      [menu addItem:NSMenuItem.separatorItem];
      continue;
    }
    NSMenuItem* const menuItem = [[NSMenuItem alloc] initWithTitle:nsString(item.title)
                                                            action:nil
                                                     keyEquivalent:@""];
    menuItem.representedObject = nsString(item.representedObject);
    [menu addItem:menuItem];
  }
}

void MacGeneralView::selectFnReplacementItem(std::size_t index) {
  [controller_.fnReplacementModifierPopup selectItemAtIndex:static_cast<NSInteger>(index)];
}

void MacGeneralView::setFnReplacementHint(std::string_view text) {
  controller_.fnReplacementModifierHintLabel.stringValue = nsString(text);
}

void MacGeneralView::setLocalShortcutTitle(std::string_view title) {
  controller_.localShortcutButton.title = nsString(title);
  controller_.localShortcutButton.accessibilityValue = nsString(title);
}

bool MacGeneralView::isLocalShortcutTitleCut() {
  // Outside of a window nothing has its size yet.
  if (!controller_.view.window) return false;
  [controller_.view layoutSubtreeIfNeeded];
  // Views stand on whole pixels, which on some screens are half points.
  constexpr CGFloat tolerance = 0.5;
  NSButton* const button = controller_.localShortcutButton;
  const NSRect place = [button alignmentRectForFrame:button.frame];
  return place.size.width < button.intrinsicContentSize.width - tolerance;
}

void MacGeneralView::setLocalShortcutWholeTitle(std::optional<std::string_view> title) {
  NSButton* const button = controller_.localShortcutButton;
  button.toolTip = title ? nsString(*title) : nil;
  button.accessibilityLabel = nsString(title.value_or(generalLayout::localShortcutTitle));
}

void MacGeneralView::setResetLocalShortcutEnabled(bool enabled) {
  controller_.resetLocalShortcutButton.enabled = enabled;
}

void MacGeneralView::setLocalShortcutHint(std::string_view text) {
  controller_.localShortcutHintLabel.stringValue = nsString(text);
}

void MacGeneralView::setPermission(std::string_view buttonTitle, PermissionColor color,
                                   std::string_view toolTip) {
  controller_.axPermissionButton.title = nsString(buttonTitle);
  KeyrowDotView* const indicator = controller_.axPermissionIndicatorView;
  indicator.color =
      color == PermissionColor::green ? NSColor.systemGreenColor : NSColor.systemRedColor;
  indicator.toolTip = nsString(toolTip);
  indicator.accessibilityLabel = nsString(toolTip);
}

bool MacGeneralView::isPermissionPopoverShown() { return controller_.axPermissionPopover.shown; }

void MacGeneralView::showPermissionPopover() {
  NSButton* const button = controller_.axPermissionHelpButton;
  [controller_.axPermissionPopover showRelativeToRect:button.bounds
                                               ofView:button
                                        preferredEdge:NSRectEdgeMaxY];
}

void MacGeneralView::closePermissionPopover() {
  [controller_.axPermissionPopover performClose:nil];
}

}  // namespace keyrow::macos
