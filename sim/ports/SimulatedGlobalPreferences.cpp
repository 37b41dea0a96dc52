#include "sim/ports/SimulatedGlobalPreferences.h"

namespace keyrow::sim {

std::optional<PropertyValue> SimulatedGlobalPreferences::copyValue(std::string_view key) {
  if (!mac_.call(PortCall::copyPreference)) return std::nullopt;
  const std::scoped_lock guard{mutex_};
  const auto found = copy_.find(key);
  return found == copy_.end() ? std::nullopt : std::optional{found->second};
}

void SimulatedGlobalPreferences::setValue(std::string_view key, const PropertyValue& value) {
  const std::scoped_lock guard{mutex_};
  copy_.insert_or_assign(std::string{key}, value);
  changes_.insert_or_assign(std::string{key}, value);
}

bool SimulatedGlobalPreferences::synchronize() {
  if (!mac_.call(PortCall::synchronizePreferences)) return false;
  const std::scoped_lock guard{mutex_};
  for (const auto& [key, value] : changes_) mac_.globalPreferences.setValue(domain_, key, value);
  changes_.clear();
  copy_ = mac_.globalPreferences.domain(domain_);
  return true;
}

}  // namespace keyrow::sim
