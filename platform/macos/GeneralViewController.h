#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/DotView.h"
#include "ui/GeneralView.h"

/// The General pane of the settings window: its controls, and where they stand.
@interface GeneralViewController : NSViewController

/// `actions` has to outlive the controller.
- (instancetype)initWithActions:(keyrow::GeneralActions&)actions;

/// The check box that switches this; nil when there is none in the pane.
- (NSButton*)checkboxOf:(keyrow::Switch)what;

@property(readonly) NSTextField* fnReplacementModifierLabel;
@property(readonly) NSPopUpButton* fnReplacementModifierPopup;
@property(readonly) NSTextField* fnReplacementModifierHintLabel;
@property(readonly) NSButton* axPermissionButton;
@property(readonly) NSButton* axPermissionHelpButton;
@property(readonly) KeyrowDotView* axPermissionIndicatorView;
@property(readonly) NSStackView* axPermissionStack;
@property(readonly) NSButton* quitButton;
@property(readonly) NSTextField* localShortcutLabel;
@property(readonly) NSButton* localShortcutButton;
@property(readonly) NSButton* resetLocalShortcutButton;
@property(readonly) NSTextField* localShortcutHintLabel;
/// Made on first use.
@property(readonly) NSPopover* axPermissionPopover;

@end
