#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <limits>
#include <map>
#include <mutex>
#include <utility>

namespace keyrow::sim {

/// Thrown where so much happens at once that it has to be a mistake.
class TooMuchHappens : public std::exception {
 public:
  const char* what() const noexcept override { return "too much happens"; }
};

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

  /// Counts something that happened, other than work that was scheduled.
  void noteEvent() { ++eventCount_; }

  /// From now on no more than so many events and pieces of work may come: `runReady` and
  /// `advance` throw `TooMuchHappens` when there have been more. Without this there is no limit.
  void allow(std::uint64_t count);

  /// Runs what is due now, and what that makes due now.
  void runReady();

  /// Lets time pass, and runs what becomes due on the way.
  void advance(Duration duration);

 private:
  bool runNextUntil(Duration deadline);

  std::atomic<std::uint64_t> eventCount_{0};
  /// Guards the fields below.
  mutable std::mutex mutex_;
  Duration time_{0};
  std::uint64_t scheduledCount_ = 0;
  std::uint64_t allowedCount_ = std::numeric_limits<std::uint64_t>::max();
  std::map<Ticket, std::function<void()>> pending_;
};

}  // namespace keyrow::sim
