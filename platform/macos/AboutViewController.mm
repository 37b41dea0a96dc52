#include "platform/macos/AboutViewController.h"

#include <variant>
#include <vector>

#include "platform/macos/Controls.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/PaneRows.h"
#include "ui/AboutLayout.h"

namespace layout = keyrow::aboutLayout;
using keyrow::macos::connectControls;
using keyrow::macos::ConnectedControl;
using keyrow::macos::isOn;
using keyrow::macos::makeHintLabel;
using keyrow::macos::makePushButton;
using keyrow::macos::nsString;
using keyrow::macos::placeRow;
using layout::Control;

@implementation AboutViewController {
  keyrow::AboutActions* _actions;
  keyrow::macos::PaneCheckboxes _checkboxes;
}

- (instancetype)initWithActions:(keyrow::AboutActions&)actions {
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
  keyrow::macos::focus(_contactButton);
}

- (void)makeControls {
  NSImage* icon = [NSImage imageNamed:NSImageNameApplicationIcon];
  if (!icon) icon = [NSWorkspace.sharedWorkspace iconForFile:NSBundle.mainBundle.bundlePath];
  _appIconView = [NSImageView imageViewWithImage:icon];
  _appIconView.imageScaling = NSImageScaleProportionallyUpOrDown;
  _appIconView.imageAlignment = NSImageAlignCenter;
  _appIconView.accessibilityLabel = @"Keyrow";
  _appIconView.translatesAutoresizingMaskIntoConstraints = NO;

  _descriptionLabel = [NSTextField wrappingLabelWithString:nsString(layout::descriptionText)];
  _descriptionLabel.font = [NSFont systemFontOfSize:NSFont.systemFontSize];
  _descriptionLabel.textColor = NSColor.secondaryLabelColor;
  _descriptionLabel.alignment = NSTextAlignmentCenter;
  _descriptionLabel.maximumNumberOfLines = 0;
  _descriptionLabel.cell.scrollable = NO;
  _descriptionLabel.preferredMaxLayoutWidth = keyrow::paneTextWidth;
  _descriptionLabel.translatesAutoresizingMaskIntoConstraints = NO;

  _versionLabel = [NSTextField labelWithString:@""];
  _versionLabel.font = [NSFont systemFontOfSize:NSFont.smallSystemFontSize];
  _versionLabel.textColor = NSColor.secondaryLabelColor;
  _versionLabel.translatesAutoresizingMaskIntoConstraints = NO;

  _contactButton = makePushButton(layout::contactTitle);
  _reportBugButton = makePushButton(layout::reportBugTitle);
  _contactActionsStack = [NSStackView stackViewWithViews:@[ _contactButton, _reportBugButton ]];
  _contactActionsStack.orientation = NSUserInterfaceLayoutOrientationHorizontal;
  _contactActionsStack.alignment = NSLayoutAttributeCenterY;
  _contactActionsStack.spacing = layout::actionsSpacing;
  _contactActionsStack.translatesAutoresizingMaskIntoConstraints = NO;

  _checkUpdatesButton = makePushButton(layout::checkUpdatesTitle);
}

/// What a row begins with.
- (NSView*)viewOfRow:(const layout::RowLayout&)row {
  if (const auto* checkbox = std::get_if<keyrow::Checkbox>(&row.what)) {
    return _checkboxes.make(*checkbox);
  }
  if (const auto* hint = std::get_if<keyrow::Hint>(&row.what)) {
    return makeHintLabel(hint->text, keyrow::paneTextWidth, layout::hintMaximumLines);
  }
  switch (std::get<Control>(row.what)) {
    case Control::appIcon:
      return _appIconView;
    case Control::description:
      return _descriptionLabel;
    case Control::version:
      return _versionLabel;
    case Control::contactActions:
      return _contactActionsStack;
    case Control::checkUpdates:
      return _checkUpdatesButton;
  }
}

- (void)placeControls {
  NSView* const root = self.view;
  constexpr auto size = keyrow::leastSettingsContentSize;
  NSMutableArray<NSLayoutConstraint*>* const constraints = [NSMutableArray arrayWithArray:@[
    [root.widthAnchor constraintEqualToConstant:size.width],
    [root.heightAnchor constraintGreaterThanOrEqualToConstant:size.height],
    [_appIconView.widthAnchor constraintEqualToConstant:layout::iconSize],
    [_appIconView.heightAnchor constraintEqualToConstant:layout::iconSize],
    [_descriptionLabel.widthAnchor constraintEqualToConstant:keyrow::paneTextWidth],
  ]];

  NSLayoutYAxisAnchor* above = root.topAnchor;
  for (const auto& row : layout::rows) {
    above = placeRow([self viewOfRow:row], row.place, above, root, constraints);
  }
  [constraints addObject:[above constraintEqualToAnchor:root.bottomAnchor
                                               constant:-layout::bottomGap]];
  [NSLayoutConstraint activateConstraints:constraints];
}

- (void)connectControls {
  std::vector<ConnectedControl> controls;
  for (const auto& row : layout::rows) [self addControlsOfRow:row to:controls];
  connectControls(self, controls);
}

- (void)addControlsOfRow:(const layout::RowLayout&)row to:(std::vector<ConnectedControl>&)controls {
  if (const auto* checkbox = std::get_if<keyrow::Checkbox>(&row.what)) {
    controls.push_back({ _checkboxes.of(checkbox->what), @selector(toggle:) });
  }
  const auto* control = std::get_if<Control>(&row.what);
  if (!control) return;
  switch (*control) {
    case Control::contactActions:
      controls.push_back({ _contactButton, @selector(openContactEmail:) });
      controls.push_back({ _reportBugButton, @selector(openBugReportEmail:) });
      break;
    case Control::checkUpdates:
      controls.push_back({ _checkUpdatesButton, @selector(checkForUpdates:) });
      break;
    case Control::appIcon:
    case Control::description:
    case Control::version:
      break;
  }
}

- (NSButton*)checkboxOf:(keyrow::Switch)what {
  return _checkboxes.of(what);
}

- (void)openContactEmail:(id)sender {
  _actions->openContactEmail();
}

- (void)openBugReportEmail:(id)sender {
  _actions->openBugReportEmail();
}

- (void)toggle:(NSButton*)sender {
  _actions->toggle(_checkboxes.whatSwitches(sender), isOn(sender));
}

- (void)checkForUpdates:(id)sender {
  _actions->checkForUpdates();
}

@end
