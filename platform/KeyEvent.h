#pragma once

#include <cstdint>

namespace keyrow {

/// What Keyrow needs to know of a keyboard event (`CGEvent`).
struct KeyEvent {
  /// Mach absolute-time ticks (`CGEventGetTimestamp`).
  std::uint64_t timestamp = 0;
  /// `CGEventGetFlags`.
  std::uint64_t flags = 0;
  /// A virtual key code (`kCGKeyboardEventKeycode`).
  std::uint16_t keyCode = 0;
  /// Whether the key was down before (`kCGKeyboardEventAutorepeat`).
  bool isRepeat = false;
};

/// Event types (`CGEventType`, CGEventTypes.h).
namespace keyEventType {
inline constexpr std::uint32_t keyDown = 10;
inline constexpr std::uint32_t keyUp = 11;
inline constexpr std::uint32_t flagsChanged = 12;
/// What the system tells a tap that it has disabled.
inline constexpr std::uint32_t tapDisabledByTimeout = 0xFFFFFFFE;
inline constexpr std::uint32_t tapDisabledByUserInput = 0xFFFFFFFF;
}  // namespace keyEventType

/// Modifier flags of events (`CGEventFlags`, CGEventTypes.h).
namespace keyEventFlag {
inline constexpr std::uint64_t alphaShift = 0x10000;
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
inline constexpr std::uint64_t secondaryFn = 0x800000;
}  // namespace keyEventFlag

}  // namespace keyrow
