#pragma once

#include "platform/HidSystem.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The HID system as one process sees it.
class SimulatedHidSystem final : public HidSystem {
 public:
  /// What IOKit answers when it refuses (`kIOReturnNotPermitted`).
  static constexpr IOReturn refusal = static_cast<IOReturn>(0xE00002E2);

  SimulatedHidSystem(SimulatedMac& mac, OpenHandles::ProcessID process)
      : mac_{mac}, process_{process} {}

  std::unique_ptr<HidService> matchingService(std::string_view className) override;

 private:
  SimulatedMac& mac_;
  const OpenHandles::ProcessID process_;
};

}  // namespace keyrow::sim
