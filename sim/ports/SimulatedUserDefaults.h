#pragma once

#include <string>
#include <utility>

#include "platform/UserDefaults.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The user defaults of one application.
class SimulatedUserDefaults final : public UserDefaults {
 public:
  SimulatedUserDefaults(SimulatedMac& mac, std::string domain)
      : mac_{mac}, domain_{std::move(domain)} {}

  std::optional<PropertyValue> object(std::string_view key) override {
    return mac_.defaults.value(domain_, key);
  }
  std::uint64_t changeCount() override { return mac_.defaults.changeCount(); }
  void setObject(std::string_view key, const PropertyValue& value) override {
    if (mac_.call(PortCall::writeDefaults)) mac_.defaults.setValue(domain_, key, value);
  }
  void removeObject(std::string_view key) override {
    if (mac_.call(PortCall::writeDefaults)) mac_.defaults.setValue(domain_, key, std::nullopt);
  }

 private:
  SimulatedMac& mac_;
  const std::string domain_;
};

}  // namespace keyrow::sim
