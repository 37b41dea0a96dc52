#pragma once

#include "platform/MainRunLoop.h"

namespace keyrow::macos {

/// `MainRunLoop` on `NSRunLoop`.
class MacMainRunLoop final : public MainRunLoop {
 public:
  void run(std::chrono::nanoseconds duration) override;
};

}  // namespace keyrow::macos
