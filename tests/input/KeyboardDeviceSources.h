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
  std::optional<std::uint32_t> productID = {};
};

inline KeyboardDeviceSource makeSource(const SourceFields& fields) {
  KeyboardDeviceSource source;
  source.registryID = fields.registryID;
  source.kind = fields.kind;
  source.isBuiltIn = fields.isBuiltIn;
  source.vendorID = fields.vendorID;
  source.transport = fields.transport;
  source.manufacturer = fields.manufacturer;
  source.product = fields.product;
  source.locationID = fields.locationID;
  source.productID = fields.productID;
  return source;
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
                     .locationID = 4245880832,
                     .productID = 49983});
}

}  // namespace keyrow
