#pragma once

#include <memory>

#include "platform/MainQueue.h"
#include "sim/machine/Scheduler.h"
#include "sim/ports/MainThread.h"

namespace keyrow::sim {

/// The main queue of one process, on the machine's time.
class SimulatedMainQueue final : public MainQueue {
 public:
  SimulatedMainQueue(Scheduler& scheduler, std::shared_ptr<MainThread> mainThread)
      : scheduler_{scheduler}, mainThread_{std::move(mainThread)} {}

  void async(std::function<void()> work) override;
  DelayedCall after(std::chrono::nanoseconds delay, std::function<void()> work) override;

 private:
  /// The work, to be run in the main thread.
  std::function<void()> inMainThread(std::function<void()> work) const;

  Scheduler& scheduler_;
  const std::shared_ptr<MainThread> mainThread_;
};

}  // namespace keyrow::sim
