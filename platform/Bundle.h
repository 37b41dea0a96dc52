#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Port.h"
#include "platform/PropertyValue.h"

namespace keyrow {

/// The application's main bundle (`NSBundle`).
class Bundle : public Port {
 public:
  /// The bundle identifier; absent when the bundle has none.
  virtual std::optional<std::string> identifier() = 0;

  /// A value of the info dictionary (`objectForInfoDictionaryKey:`); absent when there is
  /// none.
  virtual std::optional<PropertyValue> infoValue(std::string_view key) = 0;

  /// The URL of a file among the bundle's resources (`URLForResource:withExtension:`); absent
  /// when there is none.
  virtual std::optional<std::string> resourceURL(std::string_view name) = 0;
};

}  // namespace keyrow
