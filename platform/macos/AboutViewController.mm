#include "platform/macos/AboutViewController.h"

#include "platform/macos/Controls.h"
#include "platform/macos/Conversions.h"
#include "ui/AboutLayout.h"
#include "ui/SettingsWindowView.h"

namespace layout = keyrow::aboutLayout;
using keyrow::macos::connectControls;
using keyrow::macos::isOn;
using keyrow::macos::makeCheckbox;
using keyrow::macos::makeHintLabel;
using keyrow::macos::makePushButton;
using keyrow::macos::nsString;

@implementation AboutViewController {
  keyrow::AboutActions* _actions;
}

- (instancetype)initWithActions:(keyrow::AboutActions&)actions {
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
  _descriptionLabel.preferredMaxLayoutWidth = layout::labelWidth;
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

  _enhancedDiagnosticsCheckbox = makeCheckbox(layout::enhancedDiagnosticsTitle);
  _enhancedDiagnosticsHintLabel = makeHintLabel(layout::enhancedDiagnosticsHintText,
                                                layout::labelWidth, layout::hintMaximumLines);
  _autoUpdateCheckbox = makeCheckbox(layout::autoUpdateTitle);
  _checkUpdatesButton = makePushButton(layout::checkUpdatesTitle);
}

- (NSView*)viewOfRow:(layout::Row)row {
  switch (row) {
    case layout::Row::appIcon:
      return _appIconView;
    case layout::Row::description:
      return _descriptionLabel;
    case layout::Row::version:
      return _versionLabel;
    case layout::Row::contactActions:
      return _contactActionsStack;
    case layout::Row::enhancedDiagnostics:
      return _enhancedDiagnosticsCheckbox;
    case layout::Row::enhancedDiagnosticsHint:
      return _enhancedDiagnosticsHintLabel;
    case layout::Row::autoUpdate:
      return _autoUpdateCheckbox;
    case layout::Row::checkUpdates:
      return _checkUpdatesButton;
  }
}

- (void)placeControls {
  NSView* const root = self.view;
  constexpr auto size = keyrow::settingsContentSize;
  NSMutableArray<NSLayoutConstraint*>* const constraints = [NSMutableArray arrayWithArray:@[
    [root.widthAnchor constraintEqualToConstant:size.width],
    [root.heightAnchor constraintEqualToConstant:size.height],
    [_appIconView.widthAnchor constraintEqualToConstant:layout::iconSize],
    [_appIconView.heightAnchor constraintEqualToConstant:layout::iconSize],
    [_descriptionLabel.widthAnchor constraintEqualToConstant:layout::labelWidth],
  ]];

  NSLayoutYAxisAnchor* above = root.topAnchor;
  for (const auto& row : layout::rows) {
    NSView* const view = [self viewOfRow:row.row];
    [root addSubview:view];
    [constraints addObject:row.isTopGapMinimum
                               ? [view.topAnchor constraintGreaterThanOrEqualToAnchor:above
                                                                             constant:row.topGap]
                               : [view.topAnchor constraintEqualToAnchor:above
                                                                constant:row.topGap]];
    above = view.bottomAnchor;
    if (row.width == layout::Width::centred) {
      [constraints addObject:[view.centerXAnchor constraintEqualToAnchor:root.centerXAnchor]];
      continue;
    }
    [constraints addObject:[view.leadingAnchor constraintEqualToAnchor:root.leadingAnchor
                                                              constant:layout::inset]];
    [constraints
        addObject:row.width == layout::Width::full
                      ? [view.trailingAnchor constraintEqualToAnchor:root.trailingAnchor
                                                            constant:-layout::inset]
                      : [view.trailingAnchor constraintLessThanOrEqualToAnchor:root.trailingAnchor
                                                                      constant:-layout::inset]];
  }
  [constraints addObject:[above constraintEqualToAnchor:root.bottomAnchor
                                               constant:-layout::bottomGap]];
  [NSLayoutConstraint activateConstraints:constraints];
}

- (void)connectControls {
  connectControls(self, {
                            {_contactButton, @selector(openContactEmail:)},
                            {_reportBugButton, @selector(openBugReportEmail:)},
                            {_enhancedDiagnosticsCheckbox, @selector(toggleEnhancedDiagnostics:)},
                            {_autoUpdateCheckbox, @selector(toggleAutoUpdateChecks:)},
                            {_checkUpdatesButton, @selector(checkForUpdates:)},
                        });
}

- (void)openContactEmail:(id)sender {
  _actions->openContactEmail();
}

- (void)openBugReportEmail:(id)sender {
  _actions->openBugReportEmail();
}

- (void)toggleEnhancedDiagnostics:(NSButton*)sender {
  _actions->toggleEnhancedDiagnostics(isOn(sender));
}

- (void)toggleAutoUpdateChecks:(NSButton*)sender {
  _actions->toggleAutoUpdateChecks(isOn(sender));
}

- (void)checkForUpdates:(id)sender {
  _actions->checkForUpdates();
}

@end
