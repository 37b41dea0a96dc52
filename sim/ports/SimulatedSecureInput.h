#pragma once

#include <optional>
#include <string>

#include "platform/SecureInput.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// Who has the keyboard for itself.
class SimulatedSecureInput final : public SecureInput {
 public:
  explicit SimulatedSecureInput(SimulatedMac& mac) : mac_{mac} {}

  bool isEnabled() override { return mac_.isSecureInputOn(); }
  std::optional<std::string> holder() override { return mac_.secureInputHolder(); }

 private:
  SimulatedMac& mac_;
};

}  // namespace keyrow::sim
