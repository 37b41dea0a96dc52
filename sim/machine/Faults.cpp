#include "sim/machine/Faults.h"

#include <utility>

namespace keyrow::sim {

void Faults::fail(PortCall call, std::uint64_t times, std::uint64_t passing) {
  const std::scoped_lock guard{mutex_};
  plans_[static_cast<std::size_t>(call)] = {passing, times};
}

void Faults::failOverallCalls(std::set<std::uint64_t> numbers) {
  const std::scoped_lock guard{mutex_};
  failingOverallCalls_ = std::move(numbers);
}

void Faults::repair() {
  const std::scoped_lock guard{mutex_};
  plans_ = {};
}

void Faults::clear() {
  repair();
  failOverallCalls({});
}

bool Faults::strikes(PortCall call) {
  const std::scoped_lock guard{mutex_};
  ++overallCount_;
  auto& plan = plans_[static_cast<std::size_t>(call)];
  if (plan.passing > 0) {
    --plan.passing;
  } else if (plan.failing > 0) {
    if (plan.failing != always) --plan.failing;
    return true;
  }
  return failingOverallCalls_.contains(overallCount_);
}

std::uint64_t Faults::overallCallCount() const {
  const std::scoped_lock guard{mutex_};
  return overallCount_;
}

}  // namespace keyrow::sim
