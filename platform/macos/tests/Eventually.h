#pragma once

#import <Foundation/Foundation.h>

namespace keyrow::macos {

/// Serves the main run loop until the condition holds, at most for so many seconds; gives
/// whether it holds.
template <typename Condition>
bool eventually(Condition holds, NSTimeInterval seconds = 10) {
  constexpr NSTimeInterval slice = 0.05;
  NSDate* const end = [NSDate dateWithTimeIntervalSinceNow:seconds];
  while (!holds()) {
    if (end.timeIntervalSinceNow <= 0) return false;
    CFRunLoopRunInMode(kCFRunLoopDefaultMode, slice, /*returnAfterSourceHandled=*/false);
  }
  return true;
}

}  // namespace keyrow::macos
