#pragma once

#include "platform/HidManagers.h"
#include "sim/SimulatedMac.h"

namespace keyrow::sim {

/// Makes HID managers on the machine's keyboards.
class SimulatedHidManagers final : public HidManagers {
 public:
  SimulatedHidManagers(SimulatedMac& mac, OpenHandles::ProcessID process)
      : mac_{mac}, process_{process} {}

  std::unique_ptr<HidManager> create() override;

 private:
  SimulatedMac& mac_;
  const OpenHandles::ProcessID process_;
};

}  // namespace keyrow::sim
