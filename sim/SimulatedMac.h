#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include "platform/Clock.h"
#include "platform/EventPoster.h"
#include "platform/KeyEvent.h"
#include "sim/Applications.h"
#include "sim/DistributedNotifications.h"
#include "sim/EventTapServer.h"
#include "sim/Faults.h"
#include "sim/HidHardware.h"
#include "sim/Keyboards.h"
#include "sim/OpenHandles.h"
#include "sim/PortTrace.h"
#include "sim/Power.h"
#include "sim/PropertyStore.h"
#include "sim/Scheduler.h"
#include "sim/Screen.h"
#include "sim/Timeline.h"
#include "sim/UnifiedLog.h"

namespace keyrow::sim {

/// A small, deterministic Mac on virtual time: what all its processes share. It starts
/// with the hardware in the special mode, nothing stored, and nothing in front.
class SimulatedMac {
 public:
  Scheduler scheduler;
  Timeline timeline{scheduler};
  Faults faults;
  OpenHandles openHandles;
  HidHardware hid{timeline};
  /// Domain "NSGlobalDomain".
  PropertyStore globalPreferences{timeline, TimelineEvent::Kind::preference};
  /// One domain per bundle identifier.
  PropertyStore defaults{timeline, TimelineEvent::Kind::defaults};
  UnifiedLog log{timeline};
  Applications applications;
  Keyboards keyboards;
  DistributedNotifications distributedNotifications{scheduler};
  Power power{timeline};
  Screen screen{timeline};
  EventTapServer eventTaps;
  PortTrace trace;

  /// Every system-defined event that was posted.
  std::vector<SystemDefinedEvent> systemDefinedEvents;

  /// Whether Keyrow has the permissions.
  bool isAccessibilityGranted = true;
  bool isInputMonitoringGranted = true;

  /// Whether a thread that is started gets to its work before anything else happens.
  bool threadsStartAtOnce = true;

  /// What the HID system gives as the state of Caps Lock.
  bool isCapsLockOn = false;

  /// As on Apple silicon: a tick is 125/3 ns.
  MachTimebase machTimebase{.numer = 125, .denom = 3};

  /// Date and time of day; the machine is switched on at 2024-03-01 08:00:00 UTC.
  std::chrono::system_clock::time_point wallClock() const;

  /// Mach absolute time in ticks, by `machTimebase`; 0 when that is no time base.
  std::uint64_t machAbsoluteTime() const;

  /// Asks `faults` about a port call, and puts a failing one on the timeline.
  bool strikes(PortCall call);

  /// The user changes the mode in System Settings: hardware and preference at once.
  void changeModeInSystemSettings(bool standardFunctionKeys);

  /// Lets a key event pass all taps; what gets through reaches the frontmost application,
  /// which the timeline tells.
  void postKeyEvent(std::uint32_t type, const KeyEvent& event);

  /// Lets a keyboard send one input of a usage page, now.
  void sendInput(std::shared_ptr<const SimulatedKeyboard> keyboard, std::uint32_t usagePage);
};

}  // namespace keyrow::sim
