#pragma once

#include <optional>
#include <string_view>

#include "platform/Port.h"
#include "platform/PropertyValue.h"

namespace keyrow {

/// The preferences that all applications share, for the current user and any host
/// (`kCFPreferencesCurrentUser`, `kCFPreferencesAnyHost`). Safe to call from any thread.
class GlobalPreferences : public Port {
 public:
  /// How `defaults` names the domain (`NSGlobalDomain`, NSUserDefaults.h).
  static constexpr std::string_view domain = "NSGlobalDomain";

  /// The value as of the last `synchronize` (`CFPreferencesCopyValue`).
  virtual std::optional<PropertyValue> copyValue(std::string_view key) = 0;

  /// Sets a value; others see it after the next `synchronize` (`CFPreferencesSetValue`).
  virtual void setValue(std::string_view key, const PropertyValue& value) = 0;

  /// Writes what was set here, and takes in what others wrote
  /// (`CFPreferencesSynchronize`). False when that failed.
  virtual bool synchronize() = 0;
};

}  // namespace keyrow
