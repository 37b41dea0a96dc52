#import <Foundation/Foundation.h>
#include <IOKit/hidsystem/IOHIDLib.h>

#include <memory>
#include <utility>

#include "platform/macos/MacPorts.h"
#include "platform/macos/RevocableHandler.h"

namespace keyrow::macos {

namespace {

class MacInputMonitoring final : public InputMonitoring {
 public:
  InputMonitoringAccess access() override {
    return static_cast<InputMonitoringAccess>(IOHIDCheckAccess(kIOHIDRequestTypeListenEvent));
  }

  Registration requestAccess(std::function<void()> answered) override {
    RevocableHandler<> revocable{std::move(answered)};
    const auto call = revocable.caller();
    [NSThread detachNewThreadWithBlock:^{
      @autoreleasepool {
        IOHIDRequestAccess(kIOHIDRequestTypeListenEvent);
        dispatch_async(dispatch_get_main_queue(), ^{
          call();
        });
      }
    }];
    // That the handler goes away with the request is all there is to undo.
    return Registration{[revocable = std::move(revocable)] {}};
  }
};

}  // namespace

std::unique_ptr<InputMonitoring> makeInputMonitoring() {
  return std::make_unique<MacInputMonitoring>();
}

}  // namespace keyrow::macos
