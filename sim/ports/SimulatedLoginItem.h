#pragma once

#include "platform/LoginItem.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The machine's login item for Keyrow.
class SimulatedLoginItem final : public LoginItem {
 public:
  explicit SimulatedLoginItem(SimulatedMac& mac) : mac_{mac} {}

  LoginItemStatus status() override { return mac_.loginItemStatus; }

  void registerItem() override {
    if (!mac_.call(PortCall::registerLoginItem)) return;
    // Only the user can allow what waits for that.
    if (mac_.loginItemStatus != LoginItemStatus::notRegistered) return;
    mac_.loginItemStatus =
        mac_.loginItemsNeedApproval ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled;
  }

  void unregisterItem() override {
    if (!mac_.call(PortCall::unregisterLoginItem)) return;
    mac_.loginItemStatus = LoginItemStatus::notRegistered;
  }

  void openSystemSettings() override {
    mac_.screen.note("the login items in System Settings");
    mac_.applications.activate("com.apple.systempreferences");
  }

 private:
  SimulatedMac& mac_;
};

}  // namespace keyrow::sim
