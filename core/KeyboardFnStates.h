#pragma once

#include <map>
#include <optional>

#include "core/AppSettings.h"
#include "core/FnState.h"
#include "core/KeyboardNumbers.h"
#include "platform/UserDefaults.h"

namespace keyrow {

/// The modes that the user chose for single keyboards, in the user defaults, by the keyboards'
/// numbers. An entry that is no mode, or belongs to no numbers, reads as absent; it is kept until
/// something is written in its place. Reading is safe from any thread.
class KeyboardFnStates {
 public:
  explicit KeyboardFnStates(UserDefaults& userDefaults) : userDefaults_{userDefaults} {}

  /// All that are stored. Where numbers are there in small and in capital letters, the small ones
  /// count.
  std::map<KeyboardNumbers, FnState> all() const;

  /// The mode of one keyboard; absent when it follows the others.
  std::optional<FnState> of(const KeyboardNumbers& numbers) const;
  /// Absent lets it follow again. False when it could not be stored.
  bool set(const KeyboardNumbers& numbers, std::optional<FnState> state);

  /// Whether an administrator manages them: then setting one has no effect.
  bool isManaged() const { return userDefaults_.isManaged(settingsKey::keyboardFnStates); }

 private:
  UserDefaults& userDefaults_;
};

}  // namespace keyrow
