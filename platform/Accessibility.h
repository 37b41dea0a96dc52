#pragma once

#include "platform/Port.h"

namespace keyrow {

/// The Accessibility permission.
class Accessibility : public Port {
 public:
  /// Whether this process has it (`AXIsProcessTrusted`).
  virtual bool isProcessTrusted() = 0;

  /// Lets the system ask the user for it (`AXIsProcessTrustedWithOptions` with
  /// `kAXTrustedCheckOptionPrompt`); returns at once.
  virtual void promptForTrust() = 0;
};

}  // namespace keyrow
