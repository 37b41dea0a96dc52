#pragma once

#include "platform/EventMonitors.h"

@class NSEvent;

namespace keyrow::macos {

/// The key that a key-down event tells of.
KeyDown keyDown(NSEvent* event);

/// `EventMonitors` on `NSEvent`.
class MacEventMonitors final : public EventMonitors {
 public:
  Registration addGlobalFlagsMonitor(std::function<void()> handler) override;
  Registration addLocalFlagsMonitor(std::function<void()> handler) override;
  Registration addLocalKeyDownMonitor(std::function<bool(const KeyDown&)> handler) override;
};

}  // namespace keyrow::macos
