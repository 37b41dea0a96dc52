#include "core/StoredFnStates.h"

#include "core/AppSettings.h"

namespace keyrow {

namespace {

PropertyDictionary overrides(UserDefaults& userDefaults) {
  return storedDictionary(userDefaults, settingsKey::localFnState);
}

}  // namespace

PropertyDictionary storedDictionary(UserDefaults& userDefaults, std::string_view key) {
  const auto object = userDefaults.object(key);
  const auto* dictionary = object ? object->dictionary() : nullptr;
  return dictionary ? *dictionary : PropertyDictionary{};
}

std::optional<FnState> storedFnState(const PropertyValue& value) {
  for (const auto state : {FnState::special, FnState::standard}) {
    const auto raw = rawValue(state);
    if (value == PropertyValue{raw} || value == PropertyValue{static_cast<double>(raw)} ||
        value == PropertyValue{raw != 0} || value == PropertyValue{std::to_string(raw)}) {
      return state;
    }
  }
  return std::nullopt;
}

std::optional<FnState> StoredFnStates::global() const {
  const auto object = userDefaults_.object(settingsKey::globalFnState);
  return object ? storedFnState(*object) : std::nullopt;
}

bool StoredFnStates::setGlobal(FnState state) {
  userDefaults_.setObject(settingsKey::globalFnState, rawValue(state));
  return global() == state;
}

std::optional<FnState> StoredFnStates::local(std::string_view bundleIdentifier) const {
  const auto stored = overrides(userDefaults_);
  const auto entry = stored.find(bundleIdentifier);
  return entry == stored.end() ? std::nullopt : storedFnState(entry->second);
}

bool StoredFnStates::setLocal(std::string_view bundleIdentifier, FnState state) {
  auto stored = overrides(userDefaults_);
  stored.insert_or_assign(std::string{bundleIdentifier}, rawValue(state));
  userDefaults_.setObject(settingsKey::localFnState, std::move(stored));
  return local(bundleIdentifier) == state;
}

bool StoredFnStates::removeLocal(std::string_view bundleIdentifier) {
  return removeLocals({std::string{bundleIdentifier}});
}

bool StoredFnStates::removeLocals(const std::vector<std::string>& bundleIdentifiers) {
  auto stored = overrides(userDefaults_);
  std::size_t removed = 0;
  for (const auto& identifier : bundleIdentifiers) removed += stored.erase(identifier);
  if (removed == 0) return true;
  userDefaults_.setObject(settingsKey::localFnState, stored);
  return overrides(userDefaults_) == stored;
}

std::vector<std::string> StoredFnStates::localBundleIdentifiers() const {
  std::vector<std::string> identifiers;
  for (const auto& [identifier, value] : overrides(userDefaults_)) {
    identifiers.push_back(identifier);
  }
  return identifiers;
}

StoredFnStates::All StoredFnStates::all() const {
  All stored{.global = global(), .overrides = {}};
  for (const auto& [identifier, value] : overrides(userDefaults_)) {
    if (const auto state = storedFnState(value)) stored.overrides.emplace(identifier, *state);
  }
  return stored;
}

std::optional<std::int64_t> StoredFnStates::lastSeenPreference() const {
  const auto object = userDefaults_.object(settingsKey::lastSeenFnStatePreference);
  const auto* value = object ? object->integer() : nullptr;
  if (!value || (*value != noPreference && !fnStateFromRawValue(*value))) return std::nullopt;
  return *value;
}

bool StoredFnStates::setLastSeenPreference(std::int64_t preference) {
  userDefaults_.setObject(settingsKey::lastSeenFnStatePreference, preference);
  return lastSeenPreference() == preference;
}

}  // namespace keyrow
