#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace keyrow::sim {

/// The port calls of all processes in their order, for tests of order. Keeps nothing
/// until it is started. Safe to use from any thread.
class PortTrace {
 public:
  void start() {
    const std::scoped_lock guard{mutex_};
    isOn_ = true;
    calls_.clear();
  }

  void add(std::string_view call) {
    const std::scoped_lock guard{mutex_};
    if (isOn_) calls_.emplace_back(call);
  }

  /// What was called since the start, or since the last call of this.
  std::vector<std::string> take() {
    const std::scoped_lock guard{mutex_};
    return std::exchange(calls_, {});
  }

 private:
  /// Guards the fields below.
  std::mutex mutex_;
  bool isOn_ = false;
  std::vector<std::string> calls_;
};

}  // namespace keyrow::sim
