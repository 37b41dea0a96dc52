#pragma once

#include <cstdint>

#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// A call of the system fails.
struct Fail {
  PortCall call;
  /// `Faults::always` for every call from then on.
  std::uint64_t times = 1;
  /// How many calls work before.
  std::uint64_t after = 0;
  Outcome play(Stage& stage) const;
};

/// No call of the system fails any more.
struct Repair {
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
