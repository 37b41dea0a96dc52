#pragma once

#include <optional>
#include <string_view>

#include "platform/UserDefaults.h"

namespace keyrow::macos {

/// `UserDefaults` on `NSUserDefaults`.
class MacUserDefaults final : public UserDefaults {
 public:
  std::optional<PropertyValue> object(std::string_view key) override;
  void setObject(std::string_view key, const PropertyValue& value) override;
  void removeObject(std::string_view key) override;
};

}  // namespace keyrow::macos
