#include "sim/SimulatedMainQueue.h"

#include <utility>

namespace keyrow::sim {

void SimulatedMainQueue::async(std::function<void()> work) {
  scheduler_.schedule(Scheduler::Duration{0}, whileAlive(std::move(work)));
}

DelayedCall SimulatedMainQueue::after(std::chrono::nanoseconds delay, std::function<void()> work) {
  const auto ticket = scheduler_.schedule(delay, whileAlive(std::move(work)));
  return DelayedCall{[&scheduler = scheduler_, ticket] { scheduler.cancel(ticket); }};
}

std::function<void()> SimulatedMainQueue::whileAlive(std::function<void()> work) const {
  return [weak = std::weak_ptr{alive}, work = std::move(work)] {
    if (!weak.expired()) work();
  };
}

}  // namespace keyrow::sim
