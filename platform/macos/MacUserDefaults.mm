#include "platform/macos/MacUserDefaults.h"

#include "core/AppSettings.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/NotificationObserver.h"

@implementation KeyrowDefaultsObserver {
  NSUserDefaults* _defaults;
  std::atomic<std::uint64_t>* _changeCount;
}

- (instancetype)initWithDefaults:(NSUserDefaults*)defaults
                     changeCount:(std::atomic<std::uint64_t>&)changeCount {
  self = [super init];
  if (!self) return nil;
  _defaults = defaults;
  _changeCount = &changeCount;
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
  ++*_changeCount;
}

@end

namespace keyrow::macos {

MacUserDefaults::MacUserDefaults(NSUserDefaults* defaults)
    : defaults_{defaults},
      observer_{[[KeyrowDefaultsObserver alloc] initWithDefaults:defaults
                                                     changeCount:changeCount_]},
      changeObserver_{observeNotification(NSNotificationCenter.defaultCenter,
                                          NSUserDefaultsDidChangeNotification, /*queue=*/nil,
                                          [this] { ++changeCount_; })} {}

MacUserDefaults::~MacUserDefaults() { [observer_ invalidate]; }

std::optional<PropertyValue> MacUserDefaults::object(std::string_view key) {
  const id object = [defaults_ objectForKey:nsString(key)];
  return propertyValue((__bridge CFTypeRef)object);
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
