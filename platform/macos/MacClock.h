#pragma once

#include <chrono>

#include "platform/Clock.h"

namespace keyrow::macos {

/// `Clock` on the system clock and the mach time base.
class MacClock final : public Clock {
 public:
  std::chrono::system_clock::time_point now() override;
  std::chrono::nanoseconds uptime() override;
  MachTimebase machTimebase() override;
  std::uint64_t machAbsoluteTime() override;
};

}  // namespace keyrow::macos
