#pragma once

#include <mutex>

#include "platform/GlobalPreferences.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The global domain as one process sees it: its own copy, exchanged with the machine
/// only in `synchronize`.
class SimulatedGlobalPreferences final : public GlobalPreferences {
 public:
  explicit SimulatedGlobalPreferences(SimulatedMac& mac)
      : mac_{mac}, copy_{mac.globalPreferences.domain(domain)} {}

  std::optional<PropertyValue> copyValue(std::string_view key) override;
  void setValue(std::string_view key, const PropertyValue& value) override;
  bool synchronize() override;

 private:
  SimulatedMac& mac_;
  /// Guards the fields below.
  std::mutex mutex_;
  PropertyDictionary copy_;
  /// Set here, and not yet written.
  PropertyDictionary changes_;
};

}  // namespace keyrow::sim
