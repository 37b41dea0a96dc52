#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

namespace keyrow::sim {

/// Virtual time, and what is to happen in it. Time passes only in `advance`, and then
/// at once. Work may be scheduled from any thread; it runs in the thread that runs the
/// machine, in the order of its time and, at the same time, of its scheduling.
class Scheduler {
 public:
  using Duration = std::chrono::nanoseconds;
  using Ticket = std::pair<Duration, std::uint64_t>;

  /// Time since the machine was switched on.
  Duration now() const;

  /// Runs `work` once, `delay` from now; a negative delay counts as none.
  Ticket schedule(Duration delay, std::function<void()> work);

  /// Drops work that has not run; does nothing when it has.
  void cancel(const Ticket& ticket);

  /// Runs what is due now, and what that makes due now.
  void runReady();

  /// Lets time pass, and runs what becomes due on the way.
  void advance(Duration duration);

 private:
  bool runNextUntil(Duration deadline);

  /// Guards all fields.
  mutable std::mutex mutex_;
  Duration time_{0};
  std::uint64_t scheduledCount_ = 0;
  std::map<Ticket, std::function<void()>> pending_;
};

}  // namespace keyrow::sim
