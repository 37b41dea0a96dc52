#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace keyrow::sim {

/// The calls of the ports that the real system can refuse.
enum class PortCall {
  findService,
  readServiceProperty,
  openConnection,
  setHidParameter,
  readModifierLockState,
  copyPreference,
  synchronizePreferences,
  findApplication,
  frontmostApplication,
  createEventTap,
  createRunLoopSource,
  enableEventTap,
  openHidManager,
  registryEntryID,
  readDeviceProperty,
  openURL,
  registerLoginItem,
  unregisterLoginItem,
  writeFile,
  requestNotificationAuthorization,
  addNotification,
  createKeyEventSource,
  copyDevices,
  readLog,
  writeDefaults,
  writeOutput,
};

/// One port call: the name that scenarios use, and what its failing looks like.
struct PortCallInfo {
  std::string_view name;
  std::string_view failure;
};

/// In the order of `PortCall`.
inline constexpr std::array<PortCallInfo, 26> portCalls{{
    {"find-service", "IOServiceGetMatchingService finds no service"},
    {"read-service-property", "IORegistryEntryCreateCFProperty gives nothing"},
    {"open-connection", "IOServiceOpen is refused"},
    {"set-hid-parameter", "IOHIDSetCFTypeParameter is refused"},
    {"read-modifier-lock-state", "IOHIDGetModifierLockState is refused"},
    {"copy-preference", "CFPreferencesCopyValue gives nothing"},
    {"synchronize-preferences", "CFPreferencesSynchronize fails"},
    {"find-application", "no application is found for a bundle identifier"},
    {"frontmost-application", "no application is frontmost"},
    {"create-event-tap", "CGEventTapCreate gives nothing"},
    {"create-run-loop-source", "CFMachPortCreateRunLoopSource gives nothing"},
    {"enable-event-tap", "CGEventTapEnable does nothing"},
    {"open-hid-manager", "IOHIDManagerOpen is refused"},
    {"registry-entry-id", "a device has no registry entry ID"},
    {"read-device-property", "IOHIDDeviceGetProperty gives nothing"},
    {"open-url", "nothing opens the URL"},
    {"register-login-item", "SMAppService refuses to register"},
    {"unregister-login-item", "SMAppService refuses to unregister"},
    {"write-file", "the disk is full"},
    {"request-notification-authorization", "the request for authorization fails"},
    {"add-notification", "the notification cannot be posted"},
    {"create-key-event-source", "CGEventSourceCreate gives nothing"},
    {"copy-devices", "IOHIDManagerCopyDevices gives nothing"},
    {"read-log", "the log store cannot be read"},
    {"write-defaults", "a setting that is written or removed stays as it was"},
    {"write-output", "what the command keyrow prints cannot be written"},
}};

constexpr const PortCallInfo& info(PortCall call) {
  return portCalls[static_cast<std::size_t>(call)];
}

}  // namespace keyrow::sim
