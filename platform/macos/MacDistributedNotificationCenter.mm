#include "platform/macos/MacDistributedNotificationCenter.h"

#import <Foundation/Foundation.h>

#include <utility>

#include "platform/macos/Conversions.h"

/// Hands the notifications on that it is registered for.
@interface KeyrowDistributedObserver : NSObject
- (instancetype)initWithHandler:(keyrow::DistributedNotificationCenter::Handler)handler;
- (void)receive:(NSNotification*)notification;
@end

@implementation KeyrowDistributedObserver {
  keyrow::DistributedNotificationCenter::Handler _handler;
}

- (instancetype)initWithHandler:(keyrow::DistributedNotificationCenter::Handler)handler {
  self = [super init];
  if (self) _handler = std::move(handler);
  return self;
}

- (void)receive:(NSNotification*)notification {
  const auto value = keyrow::macos::propertyValue((__bridge CFTypeRef)notification.userInfo);
  const auto* dictionary = value ? value->dictionary() : nullptr;
  _handler(dictionary ? std::optional{*dictionary} : std::nullopt);
}

@end

namespace keyrow::macos {

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
  KeyrowDistributedObserver* const observer =
      [[KeyrowDistributedObserver alloc] initWithHandler:std::move(handler)];
  NSDistributedNotificationCenter* const center = NSDistributedNotificationCenter.defaultCenter;
  // AppKit suspends the centre while the application is not active.
  [center addObserver:observer
                selector:@selector(receive:)
                    name:nsString(name)
                  object:object ? nsString(*object) : nil
      suspensionBehavior:NSNotificationSuspensionBehaviorDeliverImmediately];
  return ObserverToken{[center, observer] { [center removeObserver:observer]; }};
}

}  // namespace keyrow::macos
