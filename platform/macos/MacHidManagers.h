#pragma once

#include <memory>

#include "platform/HidManagers.h"

namespace keyrow::macos {

/// `HidManagers` on `IOHIDManager`.
class MacHidManagers final : public HidManagers {
 public:
  std::unique_ptr<HidManager> create() override;
};

}  // namespace keyrow::macos
