#pragma once

#include "platform/EventTaps.h"

namespace keyrow::macos {

/// `EventTaps` on Quartz, Core Foundation run loops and `NSThread`.
class MacEventTaps final : public EventTaps {
 public:
  std::shared_ptr<EventTap> createTap(std::uint64_t eventsOfInterest,
                                      EventTapCallback& callback) override;
  std::shared_ptr<RunLoopSource> createRunLoopSource(EventTap& tap) override;
  std::shared_ptr<RunLoop> currentRunLoop() override;
  void startThread(std::string_view name, std::function<void()> body) override;
};

}  // namespace keyrow::macos
