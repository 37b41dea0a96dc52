#include "sim/machine/PropertyStore.h"

#include <utility>

#include "sim/machine/PropertyText.h"

namespace keyrow::sim {

std::optional<PropertyValue> PropertyStore::value(std::string_view domain,
                                                  std::string_view key) const {
  const std::scoped_lock guard{mutex_};
  const auto values = domains_.find(domain);
  if (values == domains_.end()) return std::nullopt;
  const auto found = values->second.find(key);
  return found == values->second.end() ? std::nullopt : std::optional{found->second};
}

void PropertyStore::setValue(std::string_view domain, std::string_view key,
                             std::optional<PropertyValue> value) {
  const std::scoped_lock guard{mutex_};
  ++writeCount_;
  auto& values = domains_[std::string{domain}];
  const auto found = values.find(key);
  const auto before = found == values.end() ? std::nullopt : std::optional{found->second};
  if (before == value) return;

  timeline_.add(kind_, std::string{key} + " = " + propertyText(value));
  if (value) {
    values.insert_or_assign(std::string{key}, *std::move(value));
  } else {
    values.erase(found);
  }
  ++changeCount_;
}

PropertyDictionary PropertyStore::domain(std::string_view domain) const {
  const std::scoped_lock guard{mutex_};
  const auto values = domains_.find(domain);
  return values == domains_.end() ? PropertyDictionary{} : values->second;
}

int PropertyStore::writeCount() const {
  const std::scoped_lock guard{mutex_};
  return writeCount_;
}

}  // namespace keyrow::sim
