#pragma once

#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <string_view>

#include "platform/IOReturn.h"
#include "platform/Port.h"
#include "platform/PropertyValue.h"

namespace keyrow {

/// An open connection to a HID service. Destroying it closes it (`IOServiceClose`).
class HidConnection : public Port {
 public:
  /// Sets a HID parameter (`IOHIDSetCFTypeParameter`).
  virtual IOReturn setParameter(std::string_view key, const PropertyValue& value) = 0;
};

/// A registered service. Destroying it releases it (`IOObjectRelease`).
class HidService : public Port {
 public:
  /// A copy of a registry property (`IORegistryEntryCreateCFProperty`, default
  /// allocator, no options); absent when the service has no such property.
  virtual std::optional<PropertyValue> property(std::string_view key) = 0;

  /// Opens a connection for the current task (`IOServiceOpen`); the error is the
  /// non-zero result of the open.
  virtual std::expected<std::unique_ptr<HidConnection>, IOReturn> open(
      std::uint32_t connectionType) = 0;
};

/// Looks up services in the I/O Registry (`kIOMainPortDefault`).
class HidSystem : public Port {
 public:
  /// The first registered service that matches the class name (`IOServiceMatching`,
  /// `IOServiceGetMatchingService`); null when there is none.
  virtual std::unique_ptr<HidService> matchingService(std::string_view className) = 0;
};

}  // namespace keyrow
