#pragma once

#import <AppKit/AppKit.h>

/// The About pane of the settings window.
@interface AboutViewController : NSViewController
@end
