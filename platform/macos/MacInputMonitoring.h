#pragma once

#include "platform/InputMonitoring.h"

namespace keyrow::macos {

/// `InputMonitoring` on the access check of IOKit.
class MacInputMonitoring final : public InputMonitoring {
 public:
  InputMonitoringAccess access() override;
  Registration requestAccess(std::function<void()> answered) override;
};

}  // namespace keyrow::macos
