#include "platform/macos/GeneralViewController.h"

#import <QuartzCore/QuartzCore.h>

#include "platform/macos/Controls.h"
#include "platform/macos/Conversions.h"
#include "ui/GeneralLayout.h"
#include "ui/SettingsWindowView.h"

namespace layout = keyrow::generalLayout;
using keyrow::macos::connectControls;
using keyrow::macos::isOn;
using keyrow::macos::makeCheckbox;
using keyrow::macos::makeHintLabel;
using keyrow::macos::makeLabel;
using keyrow::macos::makePushButton;
using keyrow::macos::nsString;

namespace {

NSTextField* makeHint(std::string_view text) {
  return makeHintLabel(text, layout::hintWidth, layout::hintMaximumLines);
}

/// The label keeps its size against the control beside it.
void keepSize(NSView* label, NSView* beside) {
  constexpr auto horizontal = NSLayoutConstraintOrientationHorizontal;
  [label setContentHuggingPriority:1000 forOrientation:horizontal];
  [label setContentCompressionResistancePriority:1000 forOrientation:horizontal];
  [beside setContentHuggingPriority:250 forOrientation:horizontal];
  [beside setContentCompressionResistancePriority:250 forOrientation:horizontal];
}

}  // namespace

@implementation GeneralViewController {
  keyrow::GeneralActions* _actions;
  NSPopover* _axPermissionPopover;
}

- (instancetype)initWithActions:(keyrow::GeneralActions&)actions {
  self = [super initWithNibName:nil bundle:nil];
  if (self) _actions = &actions;
  return self;
}

- (void)loadView {
  constexpr auto size = keyrow::settingsContentSize;
  self.view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
}

- (void)viewDidLoad {
  [super viewDidLoad];
  [self makeControls];
  [self placeControls];
  [self connectControls];
  _actions->viewDidLoad();
}

- (void)makeControls {
  _axPermissionButton = makePushButton(layout::permissionButtonTitle);
  _axPermissionIndicatorView = [[NSView alloc] init];
  _axPermissionIndicatorView.wantsLayer = YES;
  _axPermissionIndicatorView.layer.cornerRadius = layout::permissionIndicatorCornerRadius;
  _axPermissionIndicatorView.accessibilityElement = YES;
  _axPermissionIndicatorView.accessibilityRole = NSAccessibilityImageRole;
  _axPermissionHelpButton = [NSButton buttonWithTitle:@"" target:nil action:nil];
  _axPermissionHelpButton.bezelStyle = NSBezelStyleHelpButton;
  _axPermissionHelpButton.accessibilityLabel = @"About the permissions";
  _axPermissionStack = [NSStackView stackViewWithViews:@[
    _axPermissionButton, _axPermissionIndicatorView, _axPermissionHelpButton
  ]];
  _axPermissionStack.orientation = NSUserInterfaceLayoutOrientationHorizontal;
  _axPermissionStack.alignment = NSLayoutAttributeCenterY;
  _axPermissionStack.spacing = layout::permissionStackSpacing;
  _axPermissionStack.translatesAutoresizingMaskIntoConstraints = NO;
  _permissionHintLabel = makeHint(layout::permissionHintText);

  _loginItemCheckbox = makeCheckbox(layout::loginItemTitle);
  _capsLockIndicatorCheckbox = makeCheckbox(layout::capsLockIndicatorTitle);
  _externalFunctionKeysCheckbox = makeCheckbox(layout::externalFunctionKeysTitle);
  _externalFunctionKeysHintLabel = makeHint(layout::externalFunctionKeysHintText);

  _localShortcutLabel = makeLabel(layout::localShortcutTitle);
  _localShortcutButton = makePushButton({});
  _localShortcutButton.accessibilityLabel = nsString(layout::localShortcutTitle);
  _resetLocalShortcutButton = makePushButton(layout::resetTitle);
  _localShortcutHintLabel = makeHint(layout::localShortcutHintText);

  _fnReplacementModifierLabel = makeLabel(layout::fnReplacementTitle);
  _fnReplacementModifierPopup = [[NSPopUpButton alloc] initWithFrame:NSZeroRect pullsDown:NO];
  _fnReplacementModifierPopup.controlSize = NSControlSizeRegular;
  _fnReplacementModifierPopup.accessibilityLabel = nsString(layout::fnReplacementTitle);
  _fnReplacementModifierPopup.translatesAutoresizingMaskIntoConstraints = NO;
  _fnReplacementModifierHintLabel = makeHint(layout::fnReplacementHintText);

  _quitButton = makePushButton(layout::quitTitle);
}

/// What a row begins with, in the order of the rows.
- (NSView*)viewOfRow:(layout::Row)row {
  switch (row) {
    case layout::Row::permissionStack:
      return _axPermissionStack;
    case layout::Row::permissionHint:
      return _permissionHintLabel;
    case layout::Row::loginItem:
      return _loginItemCheckbox;
    case layout::Row::capsLockIndicator:
      return _capsLockIndicatorCheckbox;
    case layout::Row::externalFunctionKeys:
      return _externalFunctionKeysCheckbox;
    case layout::Row::externalFunctionKeysHint:
      return _externalFunctionKeysHintLabel;
    case layout::Row::localShortcut:
      return _localShortcutLabel;
    case layout::Row::localShortcutHint:
      return _localShortcutHintLabel;
    case layout::Row::fnReplacement:
      return _fnReplacementModifierLabel;
    case layout::Row::fnReplacementHint:
      return _fnReplacementModifierHintLabel;
  }
}

- (void)placeControls {
  NSView* const root = self.view;
  constexpr auto size = keyrow::settingsContentSize;
  NSMutableArray<NSLayoutConstraint*>* const constraints = [NSMutableArray arrayWithArray:@[
    [root.widthAnchor constraintEqualToConstant:size.width],
    [root.heightAnchor constraintEqualToConstant:size.height],
  ]];

  NSLayoutYAxisAnchor* above = root.topAnchor;
  for (const auto& row : layout::rows) {
    NSView* const view = [self viewOfRow:row.row];
    [root addSubview:view];
    [constraints addObject:[view.topAnchor constraintEqualToAnchor:above constant:row.topGap]];
    [constraints addObject:[view.leadingAnchor constraintEqualToAnchor:root.leadingAnchor
                                                              constant:layout::inset]];
    if (row.width == layout::Width::full) {
      [constraints addObject:[view.trailingAnchor constraintEqualToAnchor:root.trailingAnchor
                                                                 constant:-layout::inset]];
    } else if (row.width == layout::Width::atMost) {
      [constraints
          addObject:[view.trailingAnchor constraintLessThanOrEqualToAnchor:root.trailingAnchor
                                                                  constant:-layout::inset]];
    }
    above = view.bottomAnchor;
  }
  for (NSView* view in @[
         _localShortcutButton, _resetLocalShortcutButton, _fnReplacementModifierPopup, _quitButton
       ]) {
    [root addSubview:view];
  }
  keepSize(_localShortcutLabel, _localShortcutButton);
  keepSize(_fnReplacementModifierLabel, _fnReplacementModifierPopup);

  [constraints addObjectsFromArray:@[
    [_axPermissionIndicatorView.widthAnchor
        constraintEqualToConstant:layout::permissionIndicatorSize],
    [_axPermissionIndicatorView.heightAnchor
        constraintEqualToConstant:layout::permissionIndicatorSize],

    [_localShortcutButton.leadingAnchor
        constraintGreaterThanOrEqualToAnchor:_localShortcutLabel.trailingAnchor
                                    constant:layout::minimumGapAfterLabel],
    [_localShortcutButton.centerYAnchor constraintEqualToAnchor:_localShortcutLabel.centerYAnchor],
    [_localShortcutButton.widthAnchor
        constraintLessThanOrEqualToConstant:layout::localShortcutMaximumWidth],
    [_resetLocalShortcutButton.leadingAnchor
        constraintEqualToAnchor:_localShortcutButton.trailingAnchor
                       constant:layout::gapBeforeReset],
    [_resetLocalShortcutButton.centerYAnchor
        constraintEqualToAnchor:_localShortcutLabel.centerYAnchor],
    [_resetLocalShortcutButton.trailingAnchor constraintLessThanOrEqualToAnchor:root.trailingAnchor
                                                                       constant:-layout::inset],

    [_fnReplacementModifierPopup.leadingAnchor
        constraintGreaterThanOrEqualToAnchor:_fnReplacementModifierLabel.trailingAnchor
                                    constant:layout::minimumGapAfterLabel],
    [_fnReplacementModifierPopup.centerYAnchor
        constraintEqualToAnchor:_fnReplacementModifierLabel.centerYAnchor],
    [_fnReplacementModifierPopup.trailingAnchor constraintEqualToAnchor:root.trailingAnchor
                                                               constant:-layout::inset],

    [_fnReplacementModifierHintLabel.bottomAnchor
        constraintLessThanOrEqualToAnchor:_quitButton.topAnchor
                                 constant:-layout::minimumGapAboveQuit],
    [_quitButton.trailingAnchor constraintEqualToAnchor:root.trailingAnchor
                                               constant:-layout::inset],
    [_quitButton.bottomAnchor constraintEqualToAnchor:root.bottomAnchor
                                             constant:-layout::quitBottomGap],
  ]];
  // The rules above leave open where between the label and the edge the two buttons are.
  NSLayoutConstraint* const atTheEdge =
      [_resetLocalShortcutButton.trailingAnchor constraintEqualToAnchor:root.trailingAnchor
                                                               constant:-layout::inset];
  atTheEdge.priority = NSLayoutPriorityDefaultLow;
  [constraints addObject:atTheEdge];
  [NSLayoutConstraint activateConstraints:constraints];
}

- (void)connectControls {
  connectControls(self, {
                            {_axPermissionButton, @selector(openAccessibilityPermissions:)},
                            {_axPermissionHelpButton, @selector(showAXPermissionHelp:)},
                            {_loginItemCheckbox, @selector(toggleLaunchAtLogin:)},
                            {_capsLockIndicatorCheckbox, @selector(toggleCapsLockIndicator:)},
                            {_externalFunctionKeysCheckbox, @selector(toggleExternalFunctionKeys:)},
                            {_localShortcutButton, @selector(toggleLocalShortcutCapture:)},
                            {_resetLocalShortcutButton, @selector(resetLocalShortcut:)},
                            {_fnReplacementModifierPopup, @selector(changeFnReplacementModifier:)},
                            {_quitButton, @selector(quitApp:)},
                        });
}

- (NSPopover*)axPermissionPopover {
  if (_axPermissionPopover) return _axPermissionPopover;
  NSTextField* const label = [NSTextField wrappingLabelWithString:nsString(layout::popoverText)];
  label.font = [NSFont systemFontOfSize:NSFont.systemFontSize];
  label.maximumNumberOfLines = 0;
  label.preferredMaxLayoutWidth = layout::popoverLabelWidth;
  label.translatesAutoresizingMaskIntoConstraints = NO;

  NSViewController* const content = [[NSViewController alloc] initWithNibName:nil bundle:nil];
  content.view =
      [[NSView alloc] initWithFrame:NSMakeRect(0, 0, layout::popoverWidth, layout::popoverHeight)];
  [content.view addSubview:label];
  [NSLayoutConstraint activateConstraints:@[
    [label.topAnchor constraintEqualToAnchor:content.view.topAnchor constant:layout::popoverInset],
    [label.leadingAnchor constraintEqualToAnchor:content.view.leadingAnchor
                                        constant:layout::popoverInset],
    [label.trailingAnchor constraintEqualToAnchor:content.view.trailingAnchor
                                         constant:-layout::popoverInset],
    [label.bottomAnchor constraintEqualToAnchor:content.view.bottomAnchor
                                       constant:-layout::popoverInset],
    [label.widthAnchor constraintEqualToConstant:layout::popoverLabelWidth],
  ]];
  content.preferredContentSize = content.view.frame.size;

  _axPermissionPopover = [[NSPopover alloc] init];
  _axPermissionPopover.behavior = NSPopoverBehaviorTransient;
  _axPermissionPopover.contentViewController = content;
  return _axPermissionPopover;
}

- (void)openAccessibilityPermissions:(id)sender {
  _actions->openAccessibilityPermissions();
}

- (void)showAXPermissionHelp:(id)sender {
  _actions->showAXPermissionHelp();
}

- (void)toggleLaunchAtLogin:(NSButton*)sender {
  _actions->toggleLaunchAtLogin(isOn(sender));
}

- (void)toggleCapsLockIndicator:(NSButton*)sender {
  _actions->toggleCapsLockIndicator(isOn(sender));
}

- (void)toggleExternalFunctionKeys:(NSButton*)sender {
  _actions->toggleExternalFunctionKeys(isOn(sender));
}

- (void)changeFnReplacementModifier:(NSPopUpButton*)sender {
  _actions->changeFnReplacementModifier(
      keyrow::macos::propertyValue((__bridge CFTypeRef)sender.selectedItem.representedObject));
}

- (void)toggleLocalShortcutCapture:(id)sender {
  _actions->toggleLocalShortcutCapture();
}

- (void)resetLocalShortcut:(id)sender {
  _actions->resetLocalShortcut();
}

- (void)quitApp:(id)sender {
  _actions->quitApp();
}

@end
