#include "platform/macos/MacGeneralView.h"

#import <QuartzCore/QuartzCore.h>

#include "platform/macos/Controls.h"
#include "platform/macos/Conversions.h"

namespace keyrow::macos {

void MacGeneralView::setPane(GeneralPane& pane) {
  controller = [[GeneralViewController alloc] initWithPane:pane];
}

void MacGeneralView::setLoginItemChecked(bool checked) {
  setOn(controller.loginItemCheckbox, checked);
}

void MacGeneralView::setCapsLockIndicatorChecked(bool checked) {
  setOn(controller.capsLockIndicatorCheckbox, checked);
}

void MacGeneralView::setExternalFunctionKeysChecked(bool checked) {
  setOn(controller.externalFunctionKeysCheckbox, checked);
}

void MacGeneralView::setFnReplacementItems(std::span<const FnReplacementItem> items) {
  NSMenu* const menu = controller.fnReplacementModifierPopup.menu;
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
  [controller.fnReplacementModifierPopup selectItemAtIndex:static_cast<NSInteger>(index)];
}

void MacGeneralView::setFnReplacementHint(std::string_view text) {
  controller.fnReplacementModifierHintLabel.stringValue = nsString(text);
}

void MacGeneralView::setLocalShortcutTitle(std::string_view title) {
  controller.localShortcutButton.title = nsString(title);
  controller.localShortcutButton.accessibilityValue = nsString(title);
}

void MacGeneralView::setResetLocalShortcutEnabled(bool enabled) {
  controller.resetLocalShortcutButton.enabled = enabled;
}

void MacGeneralView::setLocalShortcutHint(std::string_view text) {
  controller.localShortcutHintLabel.stringValue = nsString(text);
}

void MacGeneralView::setPermissionIndicator(PermissionColor color, std::string_view toolTip) {
  NSView* const indicator = controller.axPermissionIndicatorView;
  NSColor* const fill =
      color == PermissionColor::green ? NSColor.systemGreenColor : NSColor.systemRedColor;
  indicator.layer.backgroundColor = fill.CGColor;
  indicator.toolTip = nsString(toolTip);
  indicator.accessibilityLabel = nsString(toolTip);
}

bool MacGeneralView::isPermissionPopoverShown() { return controller.axPermissionPopover.shown; }

void MacGeneralView::showPermissionPopover() {
  NSButton* const button = controller.axPermissionHelpButton;
  [controller.axPermissionPopover showRelativeToRect:button.bounds
                                              ofView:button
                                       preferredEdge:NSRectEdgeMaxY];
}

void MacGeneralView::closePermissionPopover() { [controller.axPermissionPopover performClose:nil]; }

}  // namespace keyrow::macos
