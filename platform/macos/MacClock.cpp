#include <mach/mach_time.h>

#include <chrono>
#include <ctime>
#include <memory>

#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacClock final : public Clock {
 public:
  std::chrono::system_clock::time_point now() override { return std::chrono::system_clock::now(); }

  std::chrono::nanoseconds uptime() override {
    return std::chrono::steady_clock::now().time_since_epoch();
  }

  std::chrono::nanoseconds timeAsleep() override {
    const auto awake = clock_gettime_nsec_np(CLOCK_UPTIME_RAW);
    return std::chrono::nanoseconds{clock_gettime_nsec_np(CLOCK_MONOTONIC_RAW) - awake};
  }

  MachTimebase machTimebase() override {
    mach_timebase_info_data_t timebase{};
    mach_timebase_info(&timebase);
    return {.numer = timebase.numer, .denom = timebase.denom};
  }

  std::uint64_t machAbsoluteTime() override { return mach_absolute_time(); }
};

}  // namespace

std::unique_ptr<Clock> makeClock() { return std::make_unique<MacClock>(); }

}  // namespace keyrow::macos
