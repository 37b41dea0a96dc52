#include "sim/SimulatedMainQueue.h"

#include <utility>

namespace keyrow::sim {

void SimulatedMainQueue::async(std::function<void()> work) {
  scheduler_.schedule(Scheduler::Duration{0},
                      [weak = std::weak_ptr{alive}, work = std::move(work)] {
                        if (!weak.expired()) work();
                      });
}

DelayedCall SimulatedMainQueue::after(std::chrono::nanoseconds delay, std::function<void()> work) {
  const auto ticket = scheduler_.schedule(delay, std::move(work));
  return DelayedCall{[this, ticket] { scheduler_.cancel(ticket); }};
}

}  // namespace keyrow::sim
