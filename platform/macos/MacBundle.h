#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/Bundle.h"

namespace keyrow::macos {

/// `Bundle` on `NSBundle`.
class MacBundle final : public Bundle {
 public:
  std::optional<std::string> identifier() override;
  std::optional<PropertyValue> infoValue(std::string_view key) override;
};

}  // namespace keyrow::macos
