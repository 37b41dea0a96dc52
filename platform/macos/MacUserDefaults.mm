#import <Foundation/Foundation.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "core/AppSettings.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"
#include "platform/macos/NotificationObserver.h"
#include "platform/macos/RevocableHandler.h"

/// Observes Keyrow's keys in user defaults.
@interface KeyrowDefaultsObserver : NSObject
/// Runs `handler` at each change, on the thread that tells of it, until it is invalidated.
- (instancetype)initWithDefaults:(NSUserDefaults*)defaults handler:(std::function<void()>)handler;
- (void)invalidate;
@end

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

namespace {

class MacUserDefaults final : public UserDefaults {
 public:
  explicit MacUserDefaults(std::optional<std::string_view> suiteName)
      : domain_{suiteName ? nsString(*suiteName)
                          : (__bridge NSString*)kCFPreferencesCurrentApplication},
        defaults_{suiteName ? [[NSUserDefaults alloc] initWithSuiteName:domain_]
                            : NSUserDefaults.standardUserDefaults},
        observer_{[[KeyrowDefaultsObserver alloc] initWithDefaults:defaults_
                                                           handler:[this] { ++changeCount_; }]},
        changeObserver_{observeNotification(NSNotificationCenter.defaultCenter,
                                            NSUserDefaultsDidChangeNotification, /*queue=*/nil,
                                            [this] { ++changeCount_; })} {}
  ~MacUserDefaults() override { [observer_ invalidate]; }

  std::uint64_t changeCount() override { return changeCount_; }

  std::optional<PropertyValue> object(std::string_view key) override {
    const id object = [defaults_ objectForKey:nsString(key)];
    return propertyValue((__bridge CFTypeRef)object);
  }

  bool isManaged(std::string_view key) override {
    return CFPreferencesAppValueIsForced((__bridge CFStringRef)nsString(key),
                                         (__bridge CFStringRef)domain_);
  }

  ObserverToken observeChanges(std::function<void()> handler) override {
    // Another thread may be about to tell while the observer is removed.
    const RevocableHandler<> revocable{std::move(handler)};
    KeyrowDefaultsObserver* const observer =
        [[KeyrowDefaultsObserver alloc] initWithDefaults:defaults_ handler:revocable.caller()];
    return ObserverToken{[observer, revocable] { [observer invalidate]; }};
  }

  void setObject(std::string_view key, const PropertyValue& value) override {
    const id object = (__bridge_transfer id)cfObject(value).release();
    [defaults_ setObject:object forKey:nsString(key)];
    // Whatever was written is to be seen at once.
    ++changeCount_;
  }

  void removeObject(std::string_view key) override {
    [defaults_ removeObjectForKey:nsString(key)];
    ++changeCount_;
  }

  bool synchronize() override { return CFPreferencesAppSynchronize((__bridge CFStringRef)domain_); }

 private:
  NSString* const domain_;
  NSUserDefaults* const defaults_;
  std::atomic<std::uint64_t> changeCount_{0};
  /// Counts the changes of other processes, too, which the notification of a change leaves
  /// out.
  KeyrowDefaultsObserver* const observer_;
  const ObserverToken changeObserver_;
};

}  // namespace

std::unique_ptr<UserDefaults> makeUserDefaults(std::optional<std::string_view> suiteName) {
  return std::make_unique<MacUserDefaults>(suiteName);
}

}  // namespace keyrow::macos
