#pragma once

#include <cstddef>

#include "platform/Accessibility.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// The machine's Accessibility permission for Keyrow.
class SimulatedAccessibility final : public Accessibility {
 public:
  explicit SimulatedAccessibility(const ProcessContext& context) : context_{context} {}

  bool isProcessTrusted() override {
    context_.mac.trace.add("is process trusted");
    return context_.mac.tellsTrust(changesBefore_);
  }
  void promptForTrust() override {
    context_.mac.trace.add("prompt for trust");
    context_.mac.screen.note("macOS asks whether Keyrow may control this computer");
  }

 private:
  const ProcessContext& context_;
  /// How often the permission had been changed when the process started.
  const std::size_t changesBefore_ = context_.mac.accessibilityChangeCount();
};

}  // namespace keyrow::sim
