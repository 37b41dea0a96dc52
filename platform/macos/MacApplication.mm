#include "platform/macos/MacApplication.h"

#import <AppKit/AppKit.h>

namespace keyrow::macos {

void MacApplication::activateAllWindows() {
  [NSRunningApplication.currentApplication activateWithOptions:NSApplicationActivateAllWindows];
}

void MacApplication::activate() {
  if (@available(macOS 14, *)) {
    [NSApp activate];
  } else {
    [NSApp activateIgnoringOtherApps:YES];
  }
}

void MacApplication::terminate() { [NSApp terminate:nil]; }

}  // namespace keyrow::macos
