#pragma once

#include <functional>

#include "platform/Alerts.h"

namespace keyrow::macos {

/// `Alerts` on `NSAlert`.
class MacAlerts final : public Alerts {
 public:
  void runModal(const Alert& alert, std::function<void(int response)> answered) override;
  void beep() override;
};

}  // namespace keyrow::macos
