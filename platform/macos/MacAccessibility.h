#pragma once

#include "platform/Accessibility.h"

namespace keyrow::macos {

/// `Accessibility` on the trust check of HIServices.
class MacAccessibility final : public Accessibility {
 public:
  bool isProcessTrusted() override;
  void promptForTrust() override;
};

}  // namespace keyrow::macos
