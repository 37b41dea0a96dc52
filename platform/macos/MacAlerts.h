#pragma once

#include "platform/Alerts.h"

namespace keyrow::macos {

/// `Alerts` on `NSAlert`.
class MacAlerts final : public Alerts {
 public:
  int runModal(const Alert& alert) override;
  void beep() override;
};

}  // namespace keyrow::macos
