#pragma once

#include <chrono>

#include "platform/Port.h"

namespace keyrow {

/// The main thread's run loop.
class MainRunLoop : public Port {
 public:
  /// Serves the main thread's events and queue for that long, in the default mode
  /// (`runMode:beforeDate:`). May come back early. Main thread only.
  virtual void run(std::chrono::nanoseconds duration) = 0;
};

}  // namespace keyrow
