#pragma once

#include "platform/LoginItem.h"

namespace keyrow::macos {

/// `LoginItem` on `SMAppService`.
class MacLoginItem final : public LoginItem {
 public:
  bool isEnabled() override;
  void registerItem() override;
  void unregisterItem() override;
};

}  // namespace keyrow::macos
