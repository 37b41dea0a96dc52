#pragma once

#include "platform/HidManagers.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Makes HID managers on the machine's keyboards.
class SimulatedHidManagers final : public HidManagers {
 public:
  explicit SimulatedHidManagers(const ProcessContext& context) : context_{context} {}

  std::unique_ptr<HidManager> create() override;

 private:
  const ProcessContext& context_;
};

}  // namespace keyrow::sim
