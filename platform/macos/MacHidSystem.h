#pragma once

#include <memory>
#include <string_view>

#include "platform/HidSystem.h"

namespace keyrow::macos {

/// `HidSystem` on IOKit.
class MacHidSystem final : public HidSystem {
 public:
  std::unique_ptr<HidService> matchingService(std::string_view className) override;
};

}  // namespace keyrow::macos
