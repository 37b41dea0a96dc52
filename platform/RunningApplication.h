#pragma once

#include <cstdint>

#include "platform/Port.h"

namespace keyrow {

/// An application that was running when it was asked for (`NSRunningApplication`).
class RunningApplication : public Port {
 public:
  virtual std::int32_t processIdentifier() = 0;

  /// Whether it has ended since.
  virtual bool isTerminated() = 0;

  /// Asks it to quit; false when that could not be sent.
  virtual bool terminate() = 0;

  /// Ends it without asking; false when that could not be sent.
  virtual bool forceTerminate() = 0;
};

}  // namespace keyrow
