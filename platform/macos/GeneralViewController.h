#pragma once

#import <AppKit/AppKit.h>

/// The General pane of the settings window.
@interface GeneralViewController : NSViewController
@end
