#include "platform/macos/GeneralViewController.h"

#include <variant>
#include <vector>

#include "platform/macos/Controls.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/PaneRows.h"
#include "ui/GeneralLayout.h"

namespace layout = keyrow::generalLayout;
using keyrow::macos::connectControls;
using keyrow::macos::ConnectedControl;
using keyrow::macos::isOn;
using keyrow::macos::makeHintLabel;
using keyrow::macos::makeLabel;
using keyrow::macos::makePushButton;
using keyrow::macos::nsString;
using keyrow::macos::placeRow;
using layout::Control;

namespace {

NSTextField* makeHint(std::string_view text) {
  return makeHintLabel(text, keyrow::paneTextWidth, layout::hintMaximumLines);
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
  keyrow::macos::PaneCheckboxes _checkboxes;
  NSPopover* _axPermissionPopover;
}

- (instancetype)initWithActions:(keyrow::GeneralActions&)actions {
  self = [super initWithNibName:nil bundle:nil];
  if (self) _actions = &actions;
  return self;
}

- (void)loadView {
  constexpr auto size = keyrow::leastSettingsContentSize;
  self.view = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, size.width, size.height)];
}

- (void)viewDidLoad {
  [super viewDidLoad];
  [self makeControls];
  [self placeControls];
  [self connectControls];
  _actions->viewDidLoad();
}

- (void)viewWillAppear {
  [super viewWillAppear];
  _actions->viewWillAppear();
}

- (void)viewDidAppear {
  [super viewDidAppear];
  _actions->viewDidAppear();
  keyrow::macos::focus(_axPermissionButton);
  [NSNotificationCenter.defaultCenter addObserver:self
                                         selector:@selector(windowDidResignKey:)
                                             name:NSWindowDidResignKeyNotification
                                           object:self.view.window];
}

- (void)viewWillDisappear {
  [super viewWillDisappear];
  [NSNotificationCenter.defaultCenter removeObserver:self
                                                name:NSWindowDidResignKeyNotification
                                              object:nil];
  _actions->viewWillDisappear();
}

- (void)windowDidResignKey:(NSNotification*)notification {
  _actions->windowDidResignKey();
}

- (void)makeControls {
  _axPermissionButton = makePushButton({});
  _axPermissionIndicatorView =
      [[KeyrowDotView alloc] initWithDiameter:layout::permissionIndicatorSize];
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

/// What a row begins with.
- (NSView*)viewOfRow:(const layout::RowLayout&)row {
  if (const auto* checkbox = std::get_if<keyrow::Checkbox>(&row.what)) {
    return _checkboxes.make(*checkbox);
  }
  if (const auto* hint = std::get_if<keyrow::Hint>(&row.what)) return makeHint(hint->text);
  switch (std::get<Control>(row.what)) {
    case Control::permissionStack:
      return _axPermissionStack;
    case Control::localShortcut:
      return _localShortcutLabel;
    case Control::localShortcutHint:
      return _localShortcutHintLabel;
    case Control::fnReplacement:
      return _fnReplacementModifierLabel;
    case Control::fnReplacementHint:
      return _fnReplacementModifierHintLabel;
  }
}

- (void)placeControls {
  NSView* const root = self.view;
  constexpr auto size = keyrow::leastSettingsContentSize;
  NSMutableArray<NSLayoutConstraint*>* const constraints = [NSMutableArray arrayWithArray:@[
    [root.widthAnchor constraintEqualToConstant:size.width],
    [root.heightAnchor constraintGreaterThanOrEqualToConstant:size.height],
  ]];

  NSLayoutYAxisAnchor* above = root.topAnchor;
  for (const auto& row : layout::rows) {
    above = placeRow([self viewOfRow:row], row.place, above, root, constraints);
  }
  for (NSView* view in @[
         _localShortcutButton, _resetLocalShortcutButton, _fnReplacementModifierPopup, _quitButton
       ]) {
    [root addSubview:view];
  }
  keepSize(_localShortcutLabel, _localShortcutButton);
  keepSize(_fnReplacementModifierLabel, _fnReplacementModifierPopup);

  [constraints addObjectsFromArray:@[
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
                                                                       constant:-keyrow::paneInset],

    [_fnReplacementModifierPopup.leadingAnchor
        constraintGreaterThanOrEqualToAnchor:_fnReplacementModifierLabel.trailingAnchor
                                    constant:layout::minimumGapAfterLabel],
    [_fnReplacementModifierPopup.centerYAnchor
        constraintEqualToAnchor:_fnReplacementModifierLabel.centerYAnchor],
    [_fnReplacementModifierPopup.trailingAnchor constraintEqualToAnchor:root.trailingAnchor
                                                               constant:-keyrow::paneInset],

    [_fnReplacementModifierHintLabel.bottomAnchor
        constraintLessThanOrEqualToAnchor:_quitButton.topAnchor
                                 constant:-layout::minimumGapAboveQuit],
    [_quitButton.trailingAnchor constraintEqualToAnchor:root.trailingAnchor
                                               constant:-keyrow::paneInset],
    [_quitButton.bottomAnchor constraintEqualToAnchor:root.bottomAnchor
                                             constant:-layout::quitBottomGap],
  ]];
  // The rules above leave open where between the label and the edge the two buttons are.
  NSLayoutConstraint* const atTheEdge =
      [_resetLocalShortcutButton.trailingAnchor constraintEqualToAnchor:root.trailingAnchor
                                                               constant:-keyrow::paneInset];
  atTheEdge.priority = NSLayoutPriorityDefaultLow;
  [constraints addObject:atTheEdge];
  [NSLayoutConstraint activateConstraints:constraints];
}

- (void)connectControls {
  std::vector<ConnectedControl> controls;
  for (const auto& row : layout::rows) [self addControlsOfRow:row to:controls];
  controls.push_back({ _quitButton, @selector(quitApp:) });
  connectControls(self, controls);
}

- (void)addControlsOfRow:(const layout::RowLayout&)row to:(std::vector<ConnectedControl>&)controls {
  if (const auto* checkbox = std::get_if<keyrow::Checkbox>(&row.what)) {
    controls.push_back({ _checkboxes.of(checkbox->what), @selector(toggle:) });
  }
  const auto* control = std::get_if<Control>(&row.what);
  if (!control) return;
  switch (*control) {
    case Control::permissionStack:
      controls.push_back({ _axPermissionButton, @selector(openPermissions:) });
      controls.push_back({ _axPermissionHelpButton, @selector(showAXPermissionHelp:) });
      break;
    case Control::localShortcut:
      controls.push_back({ _localShortcutButton, @selector(toggleLocalShortcutCapture:) });
      controls.push_back({ _resetLocalShortcutButton, @selector(resetLocalShortcut:) });
      break;
    case Control::fnReplacement:
      controls.push_back({ _fnReplacementModifierPopup, @selector(changeFnReplacementModifier:) });
      break;
    case Control::localShortcutHint:
    case Control::fnReplacementHint:
      break;
  }
}

- (NSButton*)checkboxOf:(keyrow::Switch)what {
  return _checkboxes.of(what);
}

- (NSPopover*)axPermissionPopover {
  if (_axPermissionPopover) return _axPermissionPopover;
  NSTextField* const label = [NSTextField wrappingLabelWithString:nsString(layout::popoverText)];
  label.font = [NSFont systemFontOfSize:NSFont.systemFontSize];
  label.maximumNumberOfLines = 0;
  label.preferredMaxLayoutWidth = layout::popoverLabelWidth;
  label.translatesAutoresizingMaskIntoConstraints = NO;

  NSViewController* const content = [[NSViewController alloc] initWithNibName:nil bundle:nil];
  content.view = [[NSView alloc] init];
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
  [content.view setFrameSize:content.view.fittingSize];
  content.preferredContentSize = content.view.frame.size;

  _axPermissionPopover = [[NSPopover alloc] init];
  _axPermissionPopover.behavior = NSPopoverBehaviorTransient;
  _axPermissionPopover.contentViewController = content;
  return _axPermissionPopover;
}

- (void)openPermissions:(id)sender {
  _actions->openPermissions();
}

- (void)showAXPermissionHelp:(id)sender {
  _actions->showAXPermissionHelp();
}

- (void)toggle:(NSButton*)sender {
  _actions->toggle(_checkboxes.whatSwitches(sender), isOn(sender));
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
