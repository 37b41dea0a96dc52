#include "platform/macos/MacLoginItem.h"

#import <ServiceManagement/ServiceManagement.h>

namespace keyrow::macos {

bool MacLoginItem::isEnabled() {
  return SMAppService.mainAppService.status == SMAppServiceStatusEnabled;
}

void MacLoginItem::registerItem() { [SMAppService.mainAppService registerAndReturnError:nil]; }

void MacLoginItem::unregisterItem() { [SMAppService.mainAppService unregisterAndReturnError:nil]; }

}  // namespace keyrow::macos
