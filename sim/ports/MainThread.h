#pragma once

#include <functional>
#include <vector>

namespace keyrow::sim {

/// Where a process's handlers run. What reaches a process that hangs waits; what reaches
/// one that has ended is lost. Used in the thread that runs the machine.
class MainThread {
 public:
  /// Runs work now, or as soon as the process answers again.
  void deliver(std::function<void()> work);

  void hang() { isHanging_ = true; }

  /// Runs what has waited.
  void resume();

  void end();
  bool hasEnded() const { return hasEnded_; }

 private:
  bool isHanging_ = false;
  bool hasEnded_ = false;
  std::vector<std::function<void()>> waiting_;
};

}  // namespace keyrow::sim
