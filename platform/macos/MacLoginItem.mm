#import <ServiceManagement/ServiceManagement.h>

#include <memory>

#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacLoginItem final : public LoginItem {
 public:
  bool isEnabled() override {
    return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
  }

  void registerItem() override { [SMAppService.mainAppService registerAndReturnError:nil]; }
  void unregisterItem() override { [SMAppService.mainAppService unregisterAndReturnError:nil]; }
};

}  // namespace

std::unique_ptr<LoginItem> makeLoginItem() { return std::make_unique<MacLoginItem>(); }

}  // namespace keyrow::macos
