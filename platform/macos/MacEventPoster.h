#pragma once

#include "platform/EventPoster.h"

namespace keyrow::macos {

/// `EventPoster` on `NSEvent` and Quartz.
class MacEventPoster final : public EventPoster {
 public:
  void post(const SystemDefinedEvent& event) override;
  std::unique_ptr<KeyEventSource> createKeyEventSource() override;
};

}  // namespace keyrow::macos
