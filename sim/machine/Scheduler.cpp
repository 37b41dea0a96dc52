#include "sim/machine/Scheduler.h"

#include <algorithm>

namespace keyrow::sim {

Scheduler::Duration Scheduler::now() const {
  const std::scoped_lock guard{mutex_};
  return time_;
}

Scheduler::Ticket Scheduler::schedule(Duration delay, std::function<void()> work) {
  const std::scoped_lock guard{mutex_};
  const Ticket ticket{time_ + std::max(delay, Duration{0}), scheduledCount_++};
  pending_.emplace(ticket, std::move(work));
  return ticket;
}

void Scheduler::cancel(const Ticket& ticket) {
  decltype(pending_)::node_type cancelled;
  const std::scoped_lock guard{mutex_};
  cancelled = pending_.extract(ticket);
}

void Scheduler::allow(std::uint64_t count) {
  const std::scoped_lock guard{mutex_};
  allowedCount_ = eventCount_ + count;
}

void Scheduler::runReady() {
  while (runNextUntil(now())) {
  }
}

void Scheduler::advance(Duration duration) {
  const auto deadline = now() + duration;
  while (runNextUntil(deadline)) {
  }
  const std::scoped_lock guard{mutex_};
  // The work may have let more time pass itself.
  time_ = std::max(time_, deadline);
}

bool Scheduler::runNextUntil(Duration deadline) {
  decltype(pending_)::node_type next;
  {
    const std::scoped_lock guard{mutex_};
    if (eventCount_ > allowedCount_) throw TooMuchHappens{};
    if (pending_.empty() || pending_.begin()->first.first > deadline) return false;
    ++eventCount_;
    next = pending_.extract(pending_.begin());
    time_ = std::max(time_, next.key().first);
  }
  next.mapped()();
  return true;
}

}  // namespace keyrow::sim
