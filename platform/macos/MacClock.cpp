#include "platform/macos/MacClock.h"

#include <mach/mach_time.h>

namespace keyrow::macos {

std::chrono::system_clock::time_point MacClock::now() { return std::chrono::system_clock::now(); }

std::chrono::nanoseconds MacClock::uptime() {
  return std::chrono::steady_clock::now().time_since_epoch();
}

MachTimebase MacClock::machTimebase() {
  mach_timebase_info_data_t timebase{};
  mach_timebase_info(&timebase);
  return {.numer = timebase.numer, .denom = timebase.denom};
}

std::uint64_t MacClock::machAbsoluteTime() { return mach_absolute_time(); }

}  // namespace keyrow::macos
