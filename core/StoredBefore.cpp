#include "core/StoredBefore.h"

namespace keyrow {

StoredBefore::StoredBefore(UserDefaults& userDefaults, std::span<const std::string_view> keys)
    : userDefaults_{userDefaults} {
  values_.reserve(keys.size());
  for (const auto key : keys) values_.emplace_back(key, userDefaults_.object(key));
}

void StoredBefore::putBack() const {
  for (const auto& [key, value] : values_) {
    // What an administrator manages was never the user's.
    if (userDefaults_.isManaged(key) || userDefaults_.object(key) == value) continue;
    if (value) {
      userDefaults_.setObject(key, *value);
    } else {
      userDefaults_.removeObject(key);
    }
  }
}

}  // namespace keyrow
