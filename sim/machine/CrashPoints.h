#pragma once

#include <cstdint>
#include <functional>
#include <thread>
#include <utility>

namespace keyrow::sim {

/// The points at which a process can be killed in the middle of its work: its port calls in
/// the main thread. Counts them, and calls back at one of them.
class CrashPoints {
 public:
  /// Calls `crash` at the n-th point from now on, counted from 1. It is to kill the process
  /// and to throw.
  void arm(std::uint64_t number, std::function<void()> crash) {
    count_ = 0;
    number_ = number;
    crash_ = std::move(crash);
  }

  std::uint64_t count() const { return count_; }

  /// One point is reached.
  void pass() {
    if (std::this_thread::get_id() != mainThread_ || ++count_ != number_) return;
    crash_();
  }

 private:
  const std::thread::id mainThread_ = std::this_thread::get_id();
  std::uint64_t count_ = 0;
  std::uint64_t number_ = 0;
  std::function<void()> crash_;
};

}  // namespace keyrow::sim
