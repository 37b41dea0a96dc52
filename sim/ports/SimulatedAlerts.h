#pragma once

#include "platform/Alerts.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// Alerts on the machine's screen.
class SimulatedAlerts final : public Alerts {
 public:
  explicit SimulatedAlerts(SimulatedMac& mac) : mac_{mac} {}

  int runModal(const Alert& alert) override { return mac_.screen.showAlert(alert); }
  void beep() override { mac_.screen.note("beep"); }

 private:
  SimulatedMac& mac_;
};

}  // namespace keyrow::sim
