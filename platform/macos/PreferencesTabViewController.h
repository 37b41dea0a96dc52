#pragma once

#import <AppKit/AppKit.h>

#include "ui/SettingsWindowView.h"

/// The tabs of the settings window, with a pane each.
@interface PreferencesTabViewController : NSTabViewController
- (instancetype)initWithActions:(keyrow::SettingsWindowActions&)actions;
@end
