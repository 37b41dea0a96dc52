#pragma once

#include "platform/EventMonitors.h"

namespace keyrow::macos {

/// `EventMonitors` on `NSEvent`.
class MacEventMonitors final : public EventMonitors {
 public:
  Registration addGlobalFlagsMonitor(std::function<void()> handler) override;
  Registration addLocalFlagsMonitor(std::function<void()> handler) override;
  Registration addLocalKeyDownMonitor(std::function<bool(const KeyDown&)> handler) override;
};

}  // namespace keyrow::macos
