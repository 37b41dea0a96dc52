#pragma once

#include <cstdint>

#include "platform/Clock.h"

namespace keyrow {

/// So many nanoseconds in mach ticks; the time base has to be one.
constexpr std::uint64_t machTicks(std::uint64_t nanoseconds, MachTimebase timebase) {
  // In two steps, so that the product does not wrap around.
  return nanoseconds / timebase.numer * timebase.denom +
         nanoseconds % timebase.numer * timebase.denom / timebase.numer;
}

/// When an event happened, in mach ticks. Its timestamp is that already, though nobody promises
/// it. One that lies more than a second after `now`, which is in ticks, cannot be; it is taken for
/// nanoseconds. Without a time base it stays as it is.
constexpr std::uint64_t eventTicks(std::uint64_t timestamp, std::uint64_t now,
                                   MachTimebase timebase) {
  constexpr std::uint64_t second = 1'000'000'000;
  if (timebase.numer == 0 || timestamp <= now) return timestamp;
  const bool canBeTicks = timestamp - now <= machTicks(second, timebase);
  return canBeTicks ? timestamp : machTicks(timestamp, timebase);
}

}  // namespace keyrow
