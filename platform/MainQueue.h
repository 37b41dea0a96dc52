#pragma once

#include <chrono>
#include <functional>

#include "platform/Port.h"
#include "platform/Registration.h"

namespace keyrow {

/// The main dispatch queue. Safe to call from any thread; work runs on the main thread.
class MainQueue : public Port {
 public:
  /// Runs `work` later, in the order of the calls (`dispatch_async`).
  virtual void async(std::function<void()> work) = 0;

  /// Runs `work` once after the delay (`dispatch_after`), unless the returned call is
  /// destroyed before.
  virtual DelayedCall after(std::chrono::nanoseconds delay, std::function<void()> work) = 0;
};

}  // namespace keyrow
