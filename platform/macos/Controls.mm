#include "platform/macos/Controls.h"

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

NSButton* makeCheckbox(std::string_view title) {
  NSButton* const checkbox = [NSButton checkboxWithTitle:nsString(title) target:nil action:nil];
  checkbox.translatesAutoresizingMaskIntoConstraints = NO;
  return checkbox;
}

NSButton* makePushButton(std::string_view title) {
  NSButton* const button = [NSButton buttonWithTitle:nsString(title) target:nil action:nil];
  button.bezelStyle = NSBezelStyleRounded;
  button.lineBreakMode = NSLineBreakByTruncatingTail;
  button.translatesAutoresizingMaskIntoConstraints = NO;
  return button;
}

NSTextField* makeLabel(std::string_view text) {
  NSTextField* const label = [NSTextField labelWithString:nsString(text)];
  label.font = [NSFont systemFontOfSize:NSFont.systemFontSize];
  label.translatesAutoresizingMaskIntoConstraints = NO;
  return label;
}

NSTextField* makeHintLabel(std::string_view text, double maximumWidth, NSInteger maximumLines) {
  NSTextField* const label = [NSTextField wrappingLabelWithString:nsString(text)];
  label.font = [NSFont systemFontOfSize:NSFont.smallSystemFontSize];
  label.textColor = NSColor.secondaryLabelColor;
  label.cell.wraps = YES;
  label.usesSingleLineMode = NO;
  label.maximumNumberOfLines = maximumLines;
  label.preferredMaxLayoutWidth = maximumWidth;
  label.translatesAutoresizingMaskIntoConstraints = NO;
  return label;
}

void connectControls(id target, std::span<const ConnectedControl> controls) {
  NSControl* before = controls.back().control;
  for (const auto& [control, action] : controls) {
    control.target = target;
    control.action = action;
    before.nextKeyView = control;
    before = control;
  }
}

void focus(NSControl* control) {
  if (control.canBecomeKeyView) [control.window makeFirstResponder:control];
}

}  // namespace keyrow::macos
