#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "platform/Port.h"
#include "platform/PropertyValue.h"
#include "platform/Registration.h"

namespace keyrow {

/// The application's user defaults (`NSUserDefaults`), for itself or for its command. Safe to call
/// from any thread.
class UserDefaults : public Port {
 public:
  /// The object stored under the key; absent when there is none.
  virtual std::optional<PropertyValue> object(std::string_view key) = 0;

  /// A number that has changed whenever any value has changed, whoever changed it. What
  /// was read after this number was asked for holds as long as it stays the same.
  virtual std::uint64_t changeCount() = 0;

  /// Whether an administrator manages this key, so that nothing else can be stored there
  /// (`objectIsForcedForKey:`).
  virtual bool isManaged(std::string_view key) = 0;

  /// Runs `handler` after each change of one of Keyrow's values, until the token is destroyed
  /// (key-value observing). A change of this process is told before the call that made it
  /// returns; that of another one comes from any thread, and may come late.
  virtual ObserverToken observeChanges(std::function<void()> handler) = 0;

  virtual void setObject(std::string_view key, const PropertyValue& value) = 0;
  virtual void removeObject(std::string_view key) = 0;

  /// Waits until what this process wrote is where others find it, as a program that is about to
  /// exit has to (`CFPreferencesAppSynchronize`); false when that failed.
  virtual bool synchronize() = 0;
};

}  // namespace keyrow
