#pragma once

#include <optional>
#include <string_view>

#include "platform/GlobalPreferences.h"

namespace keyrow::macos {

/// `GlobalPreferences` on the preferences of Core Foundation.
class MacGlobalPreferences final : public GlobalPreferences {
 public:
  std::optional<PropertyValue> copyValue(std::string_view key) override;
  void setValue(std::string_view key, const PropertyValue& value) override;
  bool synchronize() override;
};

}  // namespace keyrow::macos
