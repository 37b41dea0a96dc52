#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/PropertyValue.h"
#include "platform/UserDefaults.h"

namespace keyrow {

/// What is stored under some keys when this is made, for whoever changes several of them, or none.
class StoredBefore {
 public:
  /// The keys outlive it.
  StoredBefore(UserDefaults& userDefaults, std::span<const std::string_view> keys);

  /// Stores it again where there is something else now.
  void putBack() const;

 private:
  UserDefaults& userDefaults_;
  std::vector<std::pair<std::string_view, std::optional<PropertyValue>>> values_;
};

}  // namespace keyrow
