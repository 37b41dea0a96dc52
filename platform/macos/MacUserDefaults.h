#pragma once

#import <Foundation/Foundation.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/Registration.h"
#include "platform/UserDefaults.h"

/// Observes Keyrow's keys in user defaults.
@interface KeyrowDefaultsObserver : NSObject
/// Runs `handler` at each change, on the thread that tells of it, until it is invalidated.
- (instancetype)initWithDefaults:(NSUserDefaults*)defaults handler:(std::function<void()>)handler;
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
  bool isManaged(std::string_view key) override;
  ObserverToken observeChanges(std::function<void()> handler) override;
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
