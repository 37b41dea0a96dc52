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

/// The service that holds the keyboard's mode (`kIOHIDSystemClass`, IOHIDShared.h).
inline constexpr std::string_view hidSystemClass = "IOHIDSystem";
/// The type of a connection for its parameters (`kIOHIDParamConnectType`, IOHIDShared.h).
inline constexpr std::uint32_t hidParamConnectType = 1;
/// The property with its parameters, a dictionary, and the entry there that is the function-key
/// mode (`kIOHIDParametersKey`, `kIOHIDFKeyModeKey`, IOHIDParameter.h).
inline constexpr std::string_view hidParametersKey = "HIDParameters";
inline constexpr std::string_view hidFKeyModeKey = "HIDFKeyMode";
/// Caps Lock as `HidConnection::modifierLockState` selects it (`kIOHIDCapsLockState`,
/// IOHIDParameter.h).
inline constexpr std::int32_t capsLockState = 1;

/// An open connection to a HID service. Destroying it closes it (`IOServiceClose`).
class HidConnection : public Port {
 public:
  /// Sets a HID parameter (`IOHIDSetCFTypeParameter`).
  virtual IOReturn setParameter(std::string_view key, const PropertyValue& value) = 0;

  /// Whether a modifier is locked (`IOHIDGetModifierLockState`); the error is the
  /// non-zero result of the read.
  virtual std::expected<bool, IOReturn> modifierLockState(std::int32_t selector) = 0;
};

/// A registered service. Destroying it releases it (`IOObjectRelease`).
class HidService : public Port {
 public:
  /// One entry of a registry property that is a dictionary
  /// (`IORegistryEntryCreateCFProperty`, default allocator, no options); absent when the service
  /// has no such property, when that is no dictionary, and when it has no such entry.
  virtual std::optional<PropertyValue> entry(std::string_view property, std::string_view key) = 0;

  /// Opens a connection for the current task (`IOServiceOpen`); the error is the
  /// non-zero result of the open.
  virtual std::expected<std::unique_ptr<HidConnection>, IOReturn> open(
      std::uint32_t connectionType) = 0;
};

/// Looks up services in the I/O Registry (`kIOMainPortDefault`). Safe to call from any
/// thread; what it hands out belongs to the thread that asked.
class HidSystem : public Port {
 public:
  /// The first registered service that matches the class name (`IOServiceMatching`,
  /// `IOServiceGetMatchingService`); null when there is none.
  virtual std::unique_ptr<HidService> matchingService(std::string_view className) = 0;
};

}  // namespace keyrow
