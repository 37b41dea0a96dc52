#import <ServiceManagement/ServiceManagement.h>

#include <memory>

#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacLoginItem final : public LoginItem {
 public:
  LoginItemStatus status() override {
    switch (SMAppService.mainAppService.status) {
      case SMAppServiceStatusEnabled:
        return LoginItemStatus::enabled;
      case SMAppServiceStatusRequiresApproval:
        return LoginItemStatus::requiresApproval;
      default:
        return LoginItemStatus::notRegistered;
    }
  }

  void registerItem() override { [SMAppService.mainAppService registerAndReturnError:nil]; }
  void unregisterItem() override { [SMAppService.mainAppService unregisterAndReturnError:nil]; }
  void openSystemSettings() override { [SMAppService openSystemSettingsLoginItems]; }
};

}  // namespace

std::unique_ptr<LoginItem> makeLoginItem() { return std::make_unique<MacLoginItem>(); }

}  // namespace keyrow::macos
