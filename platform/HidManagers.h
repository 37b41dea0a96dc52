#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "platform/IOReturn.h"
#include "platform/Port.h"
#include "platform/PropertyValue.h"

namespace keyrow {

/// The pages that keyboards and what they send are on, and the usages of a device that make it one
/// (`kHIDPage_…`, `kHIDUsage_GD_…`, IOHIDUsageTables.h).
namespace hidPage {
inline constexpr int genericDesktop = 1;
inline constexpr int keyboardOrKeypad = 7;
}  // namespace hidPage
namespace hidUsage {
inline constexpr int keyboard = 6;
inline constexpr int keypad = 7;
}  // namespace hidUsage

/// A HID device that a manager matched. Lives as long as the device stays attached.
class HidDevice : public Port {
 public:
  /// The registry entry ID of the device's service; absent when the service or its ID
  /// is unavailable (`IOHIDDeviceGetService`, `IORegistryEntryGetRegistryEntryID`).
  virtual std::optional<std::uint64_t> registryEntryID() = 0;

  /// A device property (`IOHIDDeviceGetProperty`); absent when the device has none.
  virtual std::optional<PropertyValue> property(std::string_view key) = 0;
};

/// One input of a HID device (`IOHIDValue`).
struct HidInputValue {
  /// The device that sent the value; null when the system names none. Valid during
  /// the callback only.
  HidDevice* sender = nullptr;
  /// The usage page of the value's element.
  std::uint32_t usagePage = 0;
  /// When the input happened, in mach absolute-time ticks.
  std::uint64_t timestamp = 0;
};

/// Whether a manager is open when opening it gave this. It gives what the first device said that
/// could not be opened, although all others are: one that another program has to itself costs
/// nothing but itself.
constexpr bool isOpenAfter(IOReturn result) {
  return result == ioReturnSuccess || result == ioReturnExclusiveAccess;
}

/// Watches HID devices (`IOHIDManager`). Destroying it unschedules it from the run
/// loop, when it was scheduled, and closes it, when it was opened. Never destroy it from
/// within its own handler.
class HidManager : public Port {
 public:
  /// Which devices to watch (`IOHIDManagerSetDeviceMatchingMultiple`): those that
  /// match any of the dictionaries.
  virtual void setDeviceMatching(std::span<const PropertyDictionary> matching) = 0;

  /// Which of their values to report (`IOHIDManagerSetInputValueMatching`).
  virtual void setInputValueMatching(const PropertyDictionary& matching) = 0;

  /// Runs `handler` on the main thread at every matching input.
  virtual void registerInputValueCallback(std::function<void(const HidInputValue&)> handler) = 0;

  /// Runs `handler` on the main thread whenever a matching device is attached (also for
  /// those that are when the manager is scheduled), or removed
  /// (`IOHIDManagerRegisterDeviceMatchingCallback`, `…RemovalCallback`).
  virtual void registerDeviceMatchingCallback(std::function<void()> handler) = 0;
  virtual void registerDeviceRemovalCallback(std::function<void()> handler) = 0;

  /// The matching devices that are attached (`IOHIDManagerCopyDevices`); empty also when
  /// the system gives none.
  virtual std::vector<std::unique_ptr<HidDevice>> devices() = 0;

  /// Schedules on the main run loop in the common modes.
  virtual void scheduleWithMainRunLoop() = 0;

  /// `IOHIDManagerOpen`, no options. Waits for the user as long as `InputMonitoring` says
  /// `unknown`, so it is not to be called then. `isOpenAfter` tells what the result means.
  virtual IOReturn open() = 0;
};

/// Makes HID managers.
class HidManagers : public Port {
 public:
  /// `IOHIDManagerCreate`, default allocator, no options.
  virtual std::unique_ptr<HidManager> create() = 0;
};

}  // namespace keyrow
