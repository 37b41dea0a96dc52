#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "core/KeyboardDeviceSource.h"

namespace keyrow {

/// The fields of a source by name; what is not named is absent.
struct SourceFields {
  std::optional<std::uint64_t> registryID = {};
  KeyboardDeviceKind kind = KeyboardDeviceKind::unknown;
  std::optional<bool> isBuiltIn = {};
  std::optional<std::uint32_t> vendorID = {};
  std::optional<std::string> transport = {};
  std::optional<std::string> manufacturer = {};
  std::optional<std::string> product = {};
  std::optional<std::uint32_t> locationID = {};
};

inline KeyboardDeviceSource makeSource(const SourceFields& fields) {
  return {fields.registryID, fields.kind,         fields.isBuiltIn, fields.vendorID,
          fields.transport,  fields.manufacturer, fields.product,   fields.locationID};
}

/// A keyboard that has every property.
inline KeyboardDeviceSource completeSource() {
  return makeSource({.registryID = 4294968001,
                     .kind = KeyboardDeviceKind::external,
                     .isBuiltIn = false,
                     .vendorID = 1133,
                     .transport = "USB",
                     .manufacturer = "Logitech",
                     .product = "G Pro",
                     .locationID = 4245880832});
}

}  // namespace keyrow
