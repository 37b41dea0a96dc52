#pragma once

#include <cstdint>
#include <memory>

#include "platform/Port.h"

namespace keyrow {

/// The subtype of the events of media keys (`NX_SUBTYPE_AUX_CONTROL_BUTTONS`, IOLLEvent.h).
inline constexpr std::int16_t auxiliaryControlButtons = 8;

/// Media keys (`NX_KEYTYPE_…`, ev_keymap.h).
namespace auxiliaryKey {
inline constexpr std::int32_t soundUp = 0;
inline constexpr std::int32_t soundDown = 1;
inline constexpr std::int32_t brightnessUp = 2;
inline constexpr std::int32_t brightnessDown = 3;
inline constexpr std::int32_t mute = 7;
inline constexpr std::int32_t play = 16;
inline constexpr std::int32_t next = 17;
inline constexpr std::int32_t previous = 18;
}  // namespace auxiliaryKey

/// A system-defined event (`NSEvent` of the type `NSEventTypeSystemDefined`) at the
/// location (0, 0), without window and context.
struct SystemDefinedEvent {
  std::uint64_t modifierFlags = 0;
  std::int16_t subtype = 0;
  std::int64_t data1 = 0;
  std::int64_t data2 = 0;
};

/// Where synthesised keys come from (`CGEventSource`). Destroying it releases it.
class KeyEventSource : public Port {
 public:
  /// Posts a key at the point where HID events enter the window server
  /// (`CGEventCreateKeyboardEvent`, `CGEventPost` at `kCGHIDEventTap`); a key that cannot
  /// be made is skipped.
  virtual void post(std::uint16_t keyCode, bool isKeyDown, std::uint64_t flags) = 0;
};

/// Posts synthesised events.
class EventPoster : public Port {
 public:
  /// Posts the event, with the system's uptime as its timestamp, at `kCGHIDEventTap`; one
  /// that cannot be made is skipped.
  virtual void post(const SystemDefinedEvent& event) = 0;

  /// `CGEventSourceCreate` with `kCGEventSourceStateHIDSystemState`; null when that fails.
  virtual std::unique_ptr<KeyEventSource> createKeyEventSource() = 0;
};

}  // namespace keyrow
