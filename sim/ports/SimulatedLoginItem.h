#pragma once

#include "platform/LoginItem.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Keyrow's login item of the user in whose session a process runs.
class SimulatedLoginItem final : public LoginItem {
 public:
  explicit SimulatedLoginItem(const ProcessContext& context) : context_{context} {}

  LoginItemStatus status() override { return item(); }

  void registerItem() override {
    auto& mac = context_.mac;
    if (!mac.call(PortCall::registerLoginItem)) return;
    // Only the user can allow what waits for that.
    if (item() != LoginItemStatus::notRegistered) return;
    item() =
        mac.loginItemsNeedApproval ? LoginItemStatus::requiresApproval : LoginItemStatus::enabled;
  }

  void unregisterItem() override {
    if (!context_.mac.call(PortCall::unregisterLoginItem)) return;
    item() = LoginItemStatus::notRegistered;
  }

  void openSystemSettings() override {
    context_.mac.screen.note("the login items in System Settings");
    context_.mac.openSystemSettings(context_.user);
  }

 private:
  LoginItemStatus& item() { return context_.mac.loginItems[context_.user]; }

  const ProcessContext& context_;
};

}  // namespace keyrow::sim
