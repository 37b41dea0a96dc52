#import <AppKit/AppKit.h>

#include "app/AppDelegate.h"
#include "app/Keyrow.h"
#include "platform/macos/MacPlatform.h"
#include "platform/macos/MacViews.h"

/// Hands what AppKit tells its application delegate on to Keyrow's.
@interface KeyrowApplicationDelegate : NSObject <NSApplicationDelegate>
- (instancetype)initWithAppDelegate:(keyrow::AppDelegate&)appDelegate;
@end

@implementation KeyrowApplicationDelegate {
  keyrow::AppDelegate* _appDelegate;
}

- (instancetype)initWithAppDelegate:(keyrow::AppDelegate&)appDelegate {
  self = [super init];
  if (self) _appDelegate = &appDelegate;
  return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
  _appDelegate->applicationDidFinishLaunching();
}

- (void)applicationWillTerminate:(NSNotification*)notification {
  _appDelegate->applicationWillTerminate();
}

- (BOOL)applicationShouldHandleReopen:(NSApplication*)application hasVisibleWindows:(BOOL)visible {
  return _appDelegate->applicationShouldHandleReopen(visible);
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
  return _appDelegate->applicationSupportsSecureRestorableState();
}

@end

int main() {
  @autoreleasepool {
    NSApplication* const application = NSApplication.sharedApplication;
    [application setActivationPolicy:NSApplicationActivationPolicyAccessory];

    keyrow::macos::MacPlatform platform;
    keyrow::macos::MacViews views;
    keyrow::Keyrow keyrow{platform.platform(), views.views()};
    // The application does not retain its delegate.
    NS_VALID_UNTIL_END_OF_SCOPE KeyrowApplicationDelegate* const delegate =
        [[KeyrowApplicationDelegate alloc] initWithAppDelegate:keyrow.appDelegate()];
    application.delegate = delegate;
    [application run];
  }
  return 0;
}
