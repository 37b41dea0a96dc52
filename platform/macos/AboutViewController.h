#pragma once

#import <AppKit/AppKit.h>

#include "ui/AboutView.h"

/// The About pane of the settings window: its controls, and where they stand.
@interface AboutViewController : NSViewController

/// `actions` has to outlive the controller.
- (instancetype)initWithActions:(keyrow::AboutActions&)actions;

/// The check box that switches this; nil when there is none in the pane.
- (NSButton*)checkboxOf:(keyrow::Switch)what;

@property(readonly) NSImageView* appIconView;
@property(readonly) NSTextField* descriptionLabel;
@property(readonly) NSTextField* versionLabel;
@property(readonly) NSStackView* contactActionsStack;
@property(readonly) NSButton* contactButton;
@property(readonly) NSButton* reportBugButton;
@property(readonly) NSButton* checkUpdatesButton;

@end
