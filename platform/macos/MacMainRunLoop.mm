#include "platform/macos/MacMainRunLoop.h"

#import <Foundation/Foundation.h>

namespace keyrow::macos {

void MacMainRunLoop::run(std::chrono::nanoseconds duration) {
  const std::chrono::duration<NSTimeInterval> seconds{duration};
  [NSRunLoop.currentRunLoop runMode:NSDefaultRunLoopMode
                         beforeDate:[NSDate dateWithTimeIntervalSinceNow:seconds.count()]];
}

void MacMainRunLoop::perform(std::function<void()> work) {
  CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopDefaultMode, ^{
    work();
  });
  CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace keyrow::macos
