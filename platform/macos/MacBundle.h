#pragma once

#include <optional>
#include <string>

#include "platform/Bundle.h"

namespace keyrow::macos {

/// `Bundle` on `NSBundle`.
class MacBundle final : public Bundle {
 public:
  std::optional<std::string> identifier() override;
};

}  // namespace keyrow::macos
