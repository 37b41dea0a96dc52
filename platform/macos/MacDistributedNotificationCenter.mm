#import <Foundation/Foundation.h>

#include <memory>
#include <utility>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

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
  // In the command there is no AppKit that would drain what is left behind.
  @autoreleasepool {
    const auto value = keyrow::macos::propertyValue((__bridge CFTypeRef)notification.userInfo);
    const auto* dictionary = value ? value->dictionary() : nullptr;
    _handler(dictionary ? std::optional{*dictionary} : std::nullopt);
  }
}

@end

namespace keyrow::macos {

namespace {

class MacDistributedNotificationCenter final : public DistributedNotificationCenter {
 public:
  void post(std::string_view name, std::string_view object,
            const PropertyDictionary& userInfo) override {
    NSDictionary* const info = (__bridge_transfer NSDictionary*)cfDictionary(userInfo).release();
    [NSDistributedNotificationCenter.defaultCenter postNotificationName:nsString(name)
                                                                 object:nsString(object)
                                                               userInfo:info
                                                     deliverImmediately:YES];
  }

  ObserverToken addObserver(std::string_view name, const std::optional<std::string>& object,
                            Handler handler) override {
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
};

}  // namespace

std::unique_ptr<DistributedNotificationCenter> makeDistributedNotificationCenter() {
  return std::make_unique<MacDistributedNotificationCenter>();
}

}  // namespace keyrow::macos
