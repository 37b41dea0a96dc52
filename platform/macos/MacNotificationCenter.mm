#include "platform/macos/MacNotificationCenter.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/Conversions.h"
#include "platform/macos/NotificationObserver.h"

namespace keyrow::macos {

void MacNotificationCenter::post(std::string_view name) {
  [NSNotificationCenter.defaultCenter postNotificationName:nsString(name) object:nil];
}

ObserverToken MacNotificationCenter::addObserver(std::string_view name,
                                                 std::function<void()> handler) {
  return observeNotification(NSNotificationCenter.defaultCenter, nsString(name),
                             NSOperationQueue.mainQueue, std::move(handler));
}

}  // namespace keyrow::macos
