#pragma once

#include "platform/LoginItem.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The machine's login item for Keyrow.
class SimulatedLoginItem final : public LoginItem {
 public:
  explicit SimulatedLoginItem(SimulatedMac& mac) : mac_{mac} {}

  bool isEnabled() override { return mac_.loginItemStatus == LoginItemStatus::enabled; }

  void registerItem() override {
    if (!mac_.call(PortCall::registerLoginItem)) return;
    mac_.loginItemStatus =
        mac_.loginItemsNeedApproval ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled;
  }

  void unregisterItem() override {
    if (!mac_.call(PortCall::unregisterLoginItem)) return;
    mac_.loginItemStatus = LoginItemStatus::notRegistered;
  }

 private:
  SimulatedMac& mac_;
};

}  // namespace keyrow::sim
