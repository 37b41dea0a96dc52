#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/Port.h"
#include "platform/PropertyValue.h"

namespace keyrow {

/// The application's standard user defaults (`NSUserDefaults`). Safe to call from
/// any thread.
class UserDefaults : public Port {
 public:
  /// The object stored under the key; absent when there is none.
  virtual std::optional<PropertyValue> object(std::string_view key) = 0;

  /// A number that has changed whenever any value has changed, whoever changed it. What
  /// was read after this number was asked for holds as long as it stays the same.
  virtual std::uint64_t changeCount() = 0;

  virtual void setObject(std::string_view key, const PropertyValue& value) = 0;
  virtual void removeObject(std::string_view key) = 0;
};

}  // namespace keyrow
