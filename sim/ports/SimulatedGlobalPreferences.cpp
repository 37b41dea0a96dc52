#include "sim/ports/SimulatedGlobalPreferences.h"

namespace keyrow::sim {

std::optional<PropertyValue> SimulatedGlobalPreferences::copyValue(std::string_view key) {
  if (mac_.strikes(PortCall::copyPreference)) return std::nullopt;
  const std::scoped_lock guard{mutex};
  const auto found = copy.find(key);
  return found == copy.end() ? std::nullopt : std::optional{found->second};
}

void SimulatedGlobalPreferences::setValue(std::string_view key, const PropertyValue& value) {
  const std::scoped_lock guard{mutex};
  copy.insert_or_assign(std::string{key}, value);
  changes.insert_or_assign(std::string{key}, value);
}

bool SimulatedGlobalPreferences::synchronize() {
  if (mac_.strikes(PortCall::synchronizePreferences)) return false;
  const std::scoped_lock guard{mutex};
  for (const auto& [key, value] : changes) mac_.globalPreferences.setValue(domain, key, value);
  changes.clear();
  copy = mac_.globalPreferences.domain(domain);
  return true;
}

}  // namespace keyrow::sim
