#include "sim/Faults.h"

namespace keyrow::sim {

void Faults::fail(PortCall call, std::uint64_t times, std::uint64_t passing) {
  const std::scoped_lock guard{mutex};
  plans[static_cast<std::size_t>(call)] = {passing, times};
}

void Faults::failOverallCall(std::uint64_t number) {
  const std::scoped_lock guard{mutex};
  failingOverallCall = number;
}

void Faults::clear() {
  const std::scoped_lock guard{mutex};
  plans = {};
  failingOverallCall = 0;
}

bool Faults::strikes(PortCall call) {
  const std::scoped_lock guard{mutex};
  ++overallCount;
  auto& plan = plans[static_cast<std::size_t>(call)];
  if (plan.passing > 0) {
    --plan.passing;
  } else if (plan.failing > 0) {
    if (plan.failing != always) --plan.failing;
    return true;
  }
  return overallCount == failingOverallCall;
}

std::uint64_t Faults::overallCallCount() const {
  const std::scoped_lock guard{mutex};
  return overallCount;
}

}  // namespace keyrow::sim
