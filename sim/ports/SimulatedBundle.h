#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/Bundle.h"

namespace keyrow::sim {

/// A main bundle with the identifier and the info dictionary that it was given.
class SimulatedBundle final : public Bundle {
 public:
  /// `info` has to outlive this.
  SimulatedBundle(std::optional<std::string> identifier, const PropertyDictionary& info)
      : identifier_{std::move(identifier)}, info_{info} {}

  std::optional<std::string> identifier() override { return identifier_; }
  std::optional<PropertyValue> infoValue(std::string_view key) override {
    const auto found = info_.find(key);
    return found == info_.end() ? std::nullopt : std::optional{found->second};
  }

  std::optional<std::string> resourceURL(std::string_view name) override {
    if (!identifier_) return std::nullopt;
    return "file:///Applications/Keyrow.app/Contents/Resources/" + std::string{name};
  }

 private:
  const std::optional<std::string> identifier_;
  const PropertyDictionary& info_;
};

}  // namespace keyrow::sim
