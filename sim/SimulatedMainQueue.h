#pragma once

#include <memory>

#include "platform/MainQueue.h"
#include "sim/Scheduler.h"

namespace keyrow::sim {

/// The main queue of one process, on the machine's time. What is still queued when the
/// process ends is never run.
class SimulatedMainQueue final : public MainQueue {
 public:
  explicit SimulatedMainQueue(Scheduler& scheduler) : scheduler_{scheduler} {}

  void async(std::function<void()> work) override;
  DelayedCall after(std::chrono::nanoseconds delay, std::function<void()> work) override;

 private:
  std::function<void()> whileAlive(std::function<void()> work) const;

  Scheduler& scheduler_;
  /// Gone when the process has ended.
  const std::shared_ptr<bool> alive = std::make_shared<bool>(true);
};

}  // namespace keyrow::sim
