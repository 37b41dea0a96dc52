#import <AppKit/AppKit.h>

#include <memory>

#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacApplication final : public Application {
 public:
  void activateAllWindows() override {
    [NSRunningApplication.currentApplication activateWithOptions:NSApplicationActivateAllWindows];
  }

  void activateIgnoringOtherApps() override { [NSApp activateIgnoringOtherApps:YES]; }

  void terminate() override { [NSApp terminate:nil]; }
};

}  // namespace

std::unique_ptr<Application> makeApplication() { return std::make_unique<MacApplication>(); }

}  // namespace keyrow::macos
