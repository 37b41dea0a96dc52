#include "platform/macos/MacUserDefaults.h"

#include <utility>

#include "core/AppSettings.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/NotificationObserver.h"
#include "platform/macos/RevocableHandler.h"

@implementation KeyrowDefaultsObserver {
  NSUserDefaults* _defaults;
  std::function<void()> _handler;
}

- (instancetype)initWithDefaults:(NSUserDefaults*)defaults handler:(std::function<void()>)handler {
  self = [super init];
  if (!self) return nil;
  _defaults = defaults;
  _handler = std::move(handler);
  for (const auto key : keyrow::settingsKey::all) {
    [_defaults addObserver:self forKeyPath:keyrow::macos::nsString(key) options:0 context:nullptr];
  }
  return self;
}

- (void)invalidate {
  for (const auto key : keyrow::settingsKey::all) {
    [_defaults removeObserver:self forKeyPath:keyrow::macos::nsString(key)];
  }
}

- (void)observeValueForKeyPath:(NSString*)keyPath
                      ofObject:(id)object
                        change:(NSDictionary*)change
                       context:(void*)context {
  _handler();
}

@end

namespace keyrow::macos {

MacUserDefaults::MacUserDefaults(NSUserDefaults* defaults)
    : defaults_{defaults},
      observer_{[[KeyrowDefaultsObserver alloc] initWithDefaults:defaults
                                                         handler:[this] { ++changeCount_; }]},
      changeObserver_{observeNotification(NSNotificationCenter.defaultCenter,
                                          NSUserDefaultsDidChangeNotification, /*queue=*/nil,
                                          [this] { ++changeCount_; })} {}

MacUserDefaults::~MacUserDefaults() { [observer_ invalidate]; }

std::optional<PropertyValue> MacUserDefaults::object(std::string_view key) {
  const id object = [defaults_ objectForKey:nsString(key)];
  return propertyValue((__bridge CFTypeRef)object);
}

bool MacUserDefaults::isManaged(std::string_view key) {
  return [defaults_ objectIsForcedForKey:nsString(key)];
}

ObserverToken MacUserDefaults::observeChanges(std::function<void()> handler) {
  // Another thread may be about to tell while the observer is removed.
  const RevocableHandler<> revocable{std::move(handler)};
  KeyrowDefaultsObserver* const observer =
      [[KeyrowDefaultsObserver alloc] initWithDefaults:defaults_ handler:revocable.caller()];
  return ObserverToken{[observer, revocable] { [observer invalidate]; }};
}

void MacUserDefaults::setObject(std::string_view key, const PropertyValue& value) {
  const id object = (__bridge_transfer id)cfObject(value).release();
  [defaults_ setObject:object forKey:nsString(key)];
  // Whatever was written is to be seen at once.
  ++changeCount_;
}

void MacUserDefaults::removeObject(std::string_view key) {
  [defaults_ removeObjectForKey:nsString(key)];
  ++changeCount_;
}

}  // namespace keyrow::macos
