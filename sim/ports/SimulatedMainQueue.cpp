#include "sim/ports/SimulatedMainQueue.h"

#include <utility>

namespace keyrow::sim {

void SimulatedMainQueue::async(std::function<void()> work) {
  scheduler_.schedule(Scheduler::Duration{0}, inMainThread(std::move(work)));
}

DelayedCall SimulatedMainQueue::after(std::chrono::nanoseconds delay, std::function<void()> work) {
  const auto ticket = scheduler_.schedule(delay, inMainThread(std::move(work)));
  return DelayedCall{[&scheduler = scheduler_, ticket] { scheduler.cancel(ticket); }};
}

std::function<void()> SimulatedMainQueue::inMainThread(std::function<void()> work) const {
  return [thread = mainThread_, work = std::move(work)] { thread->runBlock(work); };
}

}  // namespace keyrow::sim
