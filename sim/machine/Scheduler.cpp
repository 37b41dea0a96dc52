#include "sim/machine/Scheduler.h"

#include <algorithm>

namespace keyrow::sim {

Scheduler::Duration Scheduler::now() const {
  const std::scoped_lock guard{mutex};
  return time;
}

Scheduler::Ticket Scheduler::schedule(Duration delay, std::function<void()> work) {
  const std::scoped_lock guard{mutex};
  const Ticket ticket{time + std::max(delay, Duration{0}), scheduledCount++};
  pending.emplace(ticket, std::move(work));
  return ticket;
}

void Scheduler::cancel(const Ticket& ticket) {
  decltype(pending)::node_type cancelled;
  const std::scoped_lock guard{mutex};
  cancelled = pending.extract(ticket);
}

void Scheduler::runReady() {
  while (runNextUntil(now())) {
  }
}

void Scheduler::advance(Duration duration) {
  const auto deadline = now() + duration;
  while (runNextUntil(deadline)) {
  }
  const std::scoped_lock guard{mutex};
  // The work may have let more time pass itself.
  time = std::max(time, deadline);
}

bool Scheduler::runNextUntil(Duration deadline) {
  decltype(pending)::node_type next;
  {
    const std::scoped_lock guard{mutex};
    if (pending.empty() || pending.begin()->first.first > deadline) return false;
    next = pending.extract(pending.begin());
    time = std::max(time, next.key().first);
  }
  next.mapped()();
  return true;
}

}  // namespace keyrow::sim
