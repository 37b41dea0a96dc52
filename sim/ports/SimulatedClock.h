#pragma once

#include "platform/Clock.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The machine's virtual time.
class SimulatedClock final : public Clock {
 public:
  explicit SimulatedClock(const SimulatedMac& mac) : mac_{mac} {}

  std::chrono::system_clock::time_point now() override { return mac_.wallClock(); }
  std::chrono::nanoseconds uptime() override { return mac_.uptime(); }
  std::chrono::nanoseconds timeAsleep() override { return mac_.power.timeAsleep(); }
  MachTimebase machTimebase() override { return mac_.machTimebase; }
  std::uint64_t machAbsoluteTime() override { return mac_.machAbsoluteTime(); }

 private:
  const SimulatedMac& mac_;
};

}  // namespace keyrow::sim
