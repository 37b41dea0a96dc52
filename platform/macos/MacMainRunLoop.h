#pragma once

#include "platform/MainRunLoop.h"

namespace keyrow::macos {

/// `MainRunLoop` on the main thread's `NSRunLoop`.
class MacMainRunLoop final : public MainRunLoop {
 public:
  void run(std::chrono::nanoseconds duration) override;
  void perform(std::function<void()> work) override;
};

}  // namespace keyrow::macos
