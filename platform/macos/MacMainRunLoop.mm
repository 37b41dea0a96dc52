#import <Foundation/Foundation.h>

#include <memory>

#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacMainRunLoop final : public MainRunLoop {
 public:
  void run(std::chrono::nanoseconds duration) override {
    const std::chrono::duration<NSTimeInterval> seconds{duration};
    [NSRunLoop.currentRunLoop runMode:NSDefaultRunLoopMode
                           beforeDate:[NSDate dateWithTimeIntervalSinceNow:seconds.count()]];
  }

  void perform(std::function<void()> work) override {
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopDefaultMode, ^{
      work();
    });
    CFRunLoopWakeUp(CFRunLoopGetMain());
  }
};

}  // namespace

std::unique_ptr<MainRunLoop> makeMainRunLoop() { return std::make_unique<MacMainRunLoop>(); }

}  // namespace keyrow::macos
