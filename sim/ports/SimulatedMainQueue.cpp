#include "sim/ports/SimulatedMainQueue.h"

#include <memory>
#include <utility>

namespace keyrow::sim {

void SimulatedMainQueue::async(std::function<void()> work) {
  scheduler_.schedule(Scheduler::Duration{0}, inMainThread(std::move(work)));
}

DelayedCall SimulatedMainQueue::after(std::chrono::nanoseconds delay, std::function<void()> work) {
  // One that is due, and waits for a thread that hangs, can still be taken back.
  const auto isTakenBack = std::make_shared<bool>(false);
  const auto ticket =
      scheduler_.schedule(delay, inMainThread([isTakenBack, work = std::move(work)] {
                            if (!*isTakenBack) work();
                          }));
  return DelayedCall{[&scheduler = scheduler_, ticket, isTakenBack] {
    *isTakenBack = true;
    scheduler.cancel(ticket);
  }};
}

std::function<void()> SimulatedMainQueue::inMainThread(std::function<void()> work) const {
  return [thread = mainThread_, work = std::move(work)] { thread->runBlock(work); };
}

}  // namespace keyrow::sim
