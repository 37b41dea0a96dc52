#pragma once

#include <mutex>
#include <string>
#include <utility>

#include "platform/GlobalPreferences.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

/// The global domain as one process sees it: its own copy, exchanged with the machine
/// only in `synchronize`.
class SimulatedGlobalPreferences final : public GlobalPreferences {
 public:
  /// `userDomain` is the global domain of the process's user.
  SimulatedGlobalPreferences(SimulatedMac& mac, std::string userDomain)
      : mac_{mac}, domain_{std::move(userDomain)}, copy_{mac.globalPreferences.domain(domain_)} {}

  std::optional<PropertyValue> copyValue(std::string_view key) override;
  void setValue(std::string_view key, const PropertyValue& value) override;
  bool synchronize() override;

 private:
  SimulatedMac& mac_;
  const std::string domain_;
  /// Guards the fields below.
  std::mutex mutex_;
  PropertyDictionary copy_;
  /// Set here, and not yet written.
  PropertyDictionary changes_;
};

}  // namespace keyrow::sim
