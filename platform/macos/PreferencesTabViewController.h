#pragma once

#import <AppKit/AppKit.h>

#include "ui/SettingsWindowView.h"

/// The tabs of the settings window, with a pane each.
@interface PreferencesTabViewController : NSTabViewController
/// `panes` in the order of the tabs, all of one size; `actions` has to outlive the controller.
- (instancetype)initWithActions:(keyrow::SettingsWindowActions&)actions
                          panes:(NSArray<NSViewController*>*)panes
                           size:(NSSize)size;
@end
