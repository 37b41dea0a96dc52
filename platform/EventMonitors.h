#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/Port.h"
#include "platform/Registration.h"

namespace keyrow {

/// A key that went down in this application (`NSEvent`).
struct KeyDown {
  /// A virtual key code.
  std::uint16_t keyCode = 0;
  /// `charactersIgnoringModifiers`; absent when there are none.
  std::optional<std::string> charactersIgnoringModifiers;
  /// By what a key equivalent is looked up (`characters`): on a keyboard that types other letters,
  /// the Latin one that Command brings. Absent when there are none.
  std::optional<std::string> characters;
  /// The modifiers that are held, as `keyEventFlag` (`modifierFlags`).
  std::uint64_t flags = 0;
  /// Whether the key was down before (`isARepeat`).
  bool isRepeat = false;
};

/// Monitors of events (`NSEvent`); destroying a registration removes its monitor. Handlers
/// run on the main thread.
class EventMonitors : public Port {
 public:
  /// Runs `handler` when modifiers change while another application is active
  /// (`addGlobalMonitorForEventsMatchingMask:handler:`, `NSEventMaskFlagsChanged`).
  virtual Registration addGlobalFlagsMonitor(std::function<void()> handler) = 0;

  /// Runs `handler` when modifiers change while this application is active, and passes the
  /// event on (`addLocalMonitorForEventsMatchingMask:handler:`, `NSEventMaskFlagsChanged`).
  virtual Registration addLocalFlagsMonitor(std::function<void()> handler) = 0;

  /// Runs `handler` when a key goes down in this application; whether it gives true decides
  /// whether the event is consumed (`NSEventMaskKeyDown`).
  virtual Registration addLocalKeyDownMonitor(std::function<bool(const KeyDown&)> handler) = 0;
};

}  // namespace keyrow
