#include "platform/macos/MacInputMonitoring.h"

#import <Foundation/Foundation.h>
#include <IOKit/hidsystem/IOHIDLib.h>

#include <utility>

#include "platform/macos/RevocableHandler.h"

namespace keyrow::macos {

InputMonitoringAccess MacInputMonitoring::access() {
  return static_cast<InputMonitoringAccess>(IOHIDCheckAccess(kIOHIDRequestTypeListenEvent));
}

Registration MacInputMonitoring::requestAccess(std::function<void()> answered) {
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

}  // namespace keyrow::macos
