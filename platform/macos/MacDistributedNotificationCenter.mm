#include "platform/macos/MacDistributedNotificationCenter.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/Conversions.h"
#include "platform/macos/NotificationObserver.h"

namespace keyrow::macos {

namespace {

std::optional<PropertyDictionary> userInfoOf(NSNotification* notification) {
  const auto value = propertyValue((__bridge CFTypeRef)notification.userInfo);
  const auto* dictionary = value ? value->dictionary() : nullptr;
  return dictionary ? std::optional{*dictionary} : std::nullopt;
}

}  // namespace

void MacDistributedNotificationCenter::post(std::string_view name, std::string_view object,
                                            const PropertyDictionary& userInfo) {
  NSDictionary* const info = (__bridge_transfer NSDictionary*)cfDictionary(userInfo).release();
  [NSDistributedNotificationCenter.defaultCenter postNotificationName:nsString(name)
                                                               object:nsString(object)
                                                             userInfo:info
                                                   deliverImmediately:YES];
}

ObserverToken MacDistributedNotificationCenter::addObserver(
    std::string_view name, const std::optional<std::string>& object, Handler handler) {
  return observeNotification(NSDistributedNotificationCenter.defaultCenter, nsString(name),
                             object ? nsString(*object) : nil, NSOperationQueue.mainQueue,
                             [handler = std::move(handler)](NSNotification* notification) {
                               handler(userInfoOf(notification));
                             });
}

}  // namespace keyrow::macos
