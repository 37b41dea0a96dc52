#pragma once

#include "platform/Application.h"

namespace keyrow::macos {

/// `Application` on `NSApplication` and `NSRunningApplication`.
class MacApplication final : public Application {
 public:
  void activateAllWindows() override;
  void activate() override;
  void terminate() override;
};

}  // namespace keyrow::macos
