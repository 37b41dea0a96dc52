#include "sim/machine/PropertyStore.h"

#include <algorithm>
#include <utility>

#include "core/AppSettings.h"
#include "core/StoredFnStates.h"
#include "sim/machine/ModeWords.h"
#include "sim/machine/PropertyText.h"

namespace keyrow::sim {

std::optional<PropertyValue> PropertyStore::value(std::string_view domain,
                                                  std::string_view key) const {
  const std::scoped_lock guard{mutex_};
  for (const auto* all : {&managed_, &domains_}) {
    const auto values = all->find(domain);
    if (values == all->end()) continue;
    const auto found = values->second.find(key);
    if (found != values->second.end()) return found->second;
  }
  return std::nullopt;
}

void PropertyStore::setValue(std::string_view domain, std::string_view key,
                             std::optional<PropertyValue> value) {
  if (!change(domain, key, std::move(value))) return;
  notify(domain);
}

void PropertyStore::manage(std::string_view domain, std::string_view key,
                           std::optional<PropertyValue> managed) {
  const auto before = value(domain, key);
  {
    const std::scoped_lock guard{mutex_};
    auto& values = managed_[std::string{domain}];
    if (managed) {
      values.insert_or_assign(std::string{key}, *std::move(managed));
    } else {
      values.erase(std::string{key});
    }
  }
  const auto now = value(domain, key);
  if (now == before) return;
  tell(key, before, now);
  ++changeCount_;
  notify(domain);
}

bool PropertyStore::isManaged(std::string_view domain, std::string_view key) const {
  const std::scoped_lock guard{mutex_};
  const auto values = managed_.find(domain);
  return values != managed_.end() && values->second.contains(key);
}

void PropertyStore::notify(std::string_view domain) const {
  const auto observed = observers_.find(domain);
  if (observed != observers_.end()) observed->second.notify();
}

bool PropertyStore::change(std::string_view domain, std::string_view key,
                           std::optional<PropertyValue> value) {
  const std::scoped_lock guard{mutex_};
  ++writeCount_;
  auto& values = domains_[std::string{domain}];
  const auto found = values.find(key);
  const auto before = found == values.end() ? std::nullopt : std::optional{found->second};
  if (before == value) return false;

  const auto managed = managed_.find(domain);
  const bool isManaged = managed != managed_.end() && managed->second.contains(key);
  if (!isManaged) tell(key, before, value);
  if (value) {
    values.insert_or_assign(std::string{key}, *std::move(value));
  } else {
    values.erase(found);
  }
  if (isManaged) return false;
  ++changeCount_;
  return true;
}

Registration PropertyStore::observe(std::string_view domain, std::function<void()> handler) {
  return observers_[std::string{domain}].add(std::move(handler));
}

void PropertyStore::tell(std::string_view key, const std::optional<PropertyValue>& before,
                         const std::optional<PropertyValue>& after) {
  const bool isPreference = kind_ == TimelineEvent::Kind::preference;
  if (!isPreference && key == settingsKey::localFnState && tellOverrides(before, after)) return;
  std::vector<std::string> terms;
  if (!isPreference) terms.emplace_back(key);
  timeline_.addChange(kind_, std::move(terms), propertyText(before), propertyText(after));
}

/// Tells of each override that came, went or changed; false when that is not all there is to
/// tell, because there is something else than modes.
bool PropertyStore::tellOverrides(const std::optional<PropertyValue>& before,
                                  const std::optional<PropertyValue>& after) {
  std::map<std::string, std::pair<std::string, std::string>> changes;
  const auto note = [&](const std::optional<PropertyValue>& value, auto side) {
    if (!value) return true;
    if (!value->dictionary()) return false;
    return std::ranges::all_of(*value->dictionary(), [&](const auto& entry) {
      const auto mode = storedFnState(entry.second);
      auto& change = changes.try_emplace(entry.first, "none", "none").first->second;
      change.*side = modeWord(mode);
      return mode.has_value();
    });
  };
  using Sides = std::pair<std::string, std::string>;
  if (!note(before, &Sides::first) || !note(after, &Sides::second)) return false;
  std::erase_if(changes, [](const auto& one) { return one.second.first == one.second.second; });
  for (auto& [app, sides] : changes) {
    timeline_.addChange(TimelineEvent::Kind::override_, {app}, sides.first, sides.second);
  }
  return !changes.empty();
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
