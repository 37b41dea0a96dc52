#pragma once

#include <chrono>
#include <functional>

#include "platform/Port.h"

namespace keyrow {

/// The main thread's run loop.
class MainRunLoop : public Port {
 public:
  /// Serves the main thread's events and queue for that long, in the default mode
  /// (`runMode:beforeDate:`). May come back early. Main thread only.
  virtual void run(std::chrono::nanoseconds duration) = 0;

  /// Runs `work` on the main thread, from the run loop itself and in no block of the main
  /// queue, as soon as it is in the default mode: not while a menu or an alert is open
  /// (`CFRunLoopPerformBlock`, `CFRunLoopWakeUp`). Safe to call from any thread.
  virtual void perform(std::function<void()> work) = 0;
};

}  // namespace keyrow
