#pragma once

#import <AppKit/AppKit.h>

#include "ui/AboutView.h"

/// The About pane of the settings window: its controls, and where they stand.
@interface AboutViewController : NSViewController

/// `actions` has to outlive the controller.
- (instancetype)initWithActions:(keyrow::AboutActions&)actions;

@property(readonly) NSImageView* appIconView;
@property(readonly) NSTextField* descriptionLabel;
@property(readonly) NSTextField* versionLabel;
@property(readonly) NSStackView* contactActionsStack;
@property(readonly) NSButton* contactButton;
@property(readonly) NSButton* reportBugButton;
@property(readonly) NSButton* enhancedDiagnosticsCheckbox;
@property(readonly) NSTextField* enhancedDiagnosticsHintLabel;
@property(readonly) NSButton* autoUpdateCheckbox;
@property(readonly) NSButton* checkUpdatesButton;

@end
