#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/AppSettings.h"
#include "core/FnState.h"
#include "platform/PropertyValue.h"
#include "platform/UserDefaults.h"

namespace keyrow {

/// The mode that a stored value stands for: the number 0 or 1, a Boolean, or the text "0" or
/// "1", which is what `defaults write` stores for an unmarked number; absent for all else.
std::optional<FnState> storedFnState(const PropertyValue& value);

/// The dictionary stored under this key; empty where there is none, or something else.
PropertyDictionary storedDictionary(UserDefaults& userDefaults, std::string_view key);

/// The modes that the user chose, in the user defaults: the global mode and one
/// override per application. A value that is no mode reads as absent; it is kept until
/// something is written in its place.
class StoredFnStates {
 public:
  explicit StoredFnStates(UserDefaults& userDefaults) : userDefaults_{userDefaults} {}

  /// The stored global mode; absent when none is stored.
  std::optional<FnState> global() const;
  /// This and what changes overrides is false when it could not be stored.
  bool setGlobal(FnState state);

  /// The override of one application; absent when it has none.
  std::optional<FnState> local(std::string_view bundleIdentifier) const;
  bool setLocal(std::string_view bundleIdentifier, FnState state);
  bool removeLocal(std::string_view bundleIdentifier);

  /// Removes the entries of all these applications in one write; writes nothing when
  /// there is none to remove.
  bool removeLocals(const std::vector<std::string>& bundleIdentifiers);

  /// Every application that has an entry, also one whose value is no mode.
  std::vector<std::string> localBundleIdentifiers() const;

  /// Whether an administrator manages the global mode, or the overrides: then setting them has
  /// no effect.
  bool isGlobalManaged() const { return userDefaults_.isManaged(settingsKey::globalFnState); }
  bool areLocalsManaged() const { return userDefaults_.isManaged(settingsKey::localFnState); }

  /// All that is stored.
  struct All {
    std::optional<FnState> global;
    std::map<std::string, FnState, std::less<>> overrides;

    friend bool operator==(const All&, const All&) = default;
  };
  All all() const;

  /// Runs `handler` after each change, until the token is destroyed: in the call that made it,
  /// or, where another process did, late and on any thread.
  ObserverToken observe(std::function<void()> handler) {
    return userDefaults_.observeChanges(std::move(handler));
  }

  /// What is kept for `lastSeenPreference` where there was no preference.
  static constexpr std::int64_t noPreference = -1;

  /// The raw value of the mode that Keyrow last saw in the system preference or wrote
  /// there, or `noPreference`; absent when nothing is kept.
  std::optional<std::int64_t> lastSeenPreference() const;
  /// False when it could not be kept.
  bool setLastSeenPreference(std::int64_t preference);

 private:
  UserDefaults& userDefaults_;
};

}  // namespace keyrow
