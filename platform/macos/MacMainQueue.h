#pragma once

#include <chrono>
#include <functional>

#include "platform/MainQueue.h"

namespace keyrow::macos {

/// `MainQueue` on the main dispatch queue.
class MacMainQueue final : public MainQueue {
 public:
  void async(std::function<void()> work) override;
  DelayedCall after(std::chrono::nanoseconds delay, std::function<void()> work) override;
};

}  // namespace keyrow::macos
