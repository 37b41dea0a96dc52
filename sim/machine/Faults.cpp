#include "sim/machine/Faults.h"

#include <utility>

namespace keyrow::sim {

void Faults::fail(PortCall call, std::uint64_t times, std::uint64_t passing) {
  const std::scoped_lock guard{mutex_};
  auto& plan = plans_[static_cast<std::size_t>(call)];
  plan.passing = passing;
  plan.failing = times;
}

void Faults::failOverallCalls(std::set<std::uint64_t> numbers) {
  const std::scoped_lock guard{mutex_};
  failingOverallCalls_ = std::move(numbers);
}

void Faults::repair() {
  const std::scoped_lock guard{mutex_};
  for (auto& plan : plans_) plan.passing = plan.failing = 0;
}

void Faults::clear() {
  repair();
  failOverallCalls({});
}

bool Faults::strikes(PortCall call) {
  const std::scoped_lock guard{mutex_};
  ++overallCount_;
  auto& plan = plans_[static_cast<std::size_t>(call)];
  ++plan.asked;
  if (plan.passing > 0) {
    --plan.passing;
  } else if (plan.failing > 0) {
    if (plan.failing != always) --plan.failing;
    return true;
  }
  return failingOverallCalls_.contains(overallCount_);
}

bool Faults::isNextToFail(PortCall call) const {
  const std::scoped_lock guard{mutex_};
  const auto& plan = plans_[static_cast<std::size_t>(call)];
  return plan.passing == 0 && plan.failing > 0;
}

std::uint64_t Faults::failuresLeft(PortCall call) const {
  const std::scoped_lock guard{mutex_};
  return plans_[static_cast<std::size_t>(call)].failing;
}

std::uint64_t Faults::callCount(PortCall call) const {
  const std::scoped_lock guard{mutex_};
  return plans_[static_cast<std::size_t>(call)].asked;
}

std::uint64_t Faults::overallCallCount() const {
  const std::scoped_lock guard{mutex_};
  return overallCount_;
}

}  // namespace keyrow::sim
