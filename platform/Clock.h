#pragma once

#include <chrono>
#include <cstdint>

#include "platform/Port.h"

namespace keyrow {

/// How mach absolute-time ticks relate to nanoseconds (`mach_timebase_info`):
/// nanoseconds = ticks × numer ÷ denom.
struct MachTimebase {
  std::uint32_t numer = 0;
  std::uint32_t denom = 0;
};

/// The time.
class Clock : public Port {
 public:
  /// The date and time of day.
  virtual std::chrono::system_clock::time_point now() = 0;

  /// Time since boot, which only passes and never jumps, and is the same in all processes.
  virtual std::chrono::nanoseconds uptime() = 0;

  /// How much of that the Mac has slept (`CLOCK_MONOTONIC_RAW` less `CLOCK_UPTIME_RAW`).
  virtual std::chrono::nanoseconds timeAsleep() = 0;

  virtual MachTimebase machTimebase() = 0;

  /// The present, in mach ticks (`mach_absolute_time`). Safe to call from any thread.
  virtual std::uint64_t machAbsoluteTime() = 0;
};

}  // namespace keyrow
