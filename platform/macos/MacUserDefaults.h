#pragma once

#import <Foundation/Foundation.h>

#include <atomic>
#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/Registration.h"
#include "platform/UserDefaults.h"

/// Observes Keyrow's keys in user defaults.
@interface KeyrowDefaultsObserver : NSObject
/// `changeCount` has to outlive the observer.
- (instancetype)initWithDefaults:(NSUserDefaults*)defaults
                     changeCount:(std::atomic<std::uint64_t>&)changeCount;
- (void)invalidate;
@end

namespace keyrow::macos {

/// `UserDefaults` on `NSUserDefaults`.
class MacUserDefaults final : public UserDefaults {
 public:
  explicit MacUserDefaults(NSUserDefaults* defaults = NSUserDefaults.standardUserDefaults);
  ~MacUserDefaults() override;

  std::uint64_t changeCount() override { return changeCount_; }
  std::optional<PropertyValue> object(std::string_view key) override;
  void setObject(std::string_view key, const PropertyValue& value) override;
  void removeObject(std::string_view key) override;

 private:
  NSUserDefaults* const defaults_;
  std::atomic<std::uint64_t> changeCount_{0};
  /// Counts the changes of other processes, too, which the notification of a change leaves
  /// out.
  KeyrowDefaultsObserver* const observer_;
  const ObserverToken changeObserver_;
};

}  // namespace keyrow::macos
