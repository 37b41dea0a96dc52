#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/Clock.h"
#include "platform/EventPoster.h"
#include "platform/KeyEvent.h"
#include "platform/LoginItem.h"
#include "sim/machine/Applications.h"
#include "sim/machine/CrashPoints.h"
#include "sim/machine/DistributedNotifications.h"
#include "sim/machine/EventTapServer.h"
#include "sim/machine/Faults.h"
#include "sim/machine/HidHardware.h"
#include "sim/machine/InputMonitoringConsent.h"
#include "sim/machine/KeyboardFilters.h"
#include "sim/machine/Keyboards.h"
#include "sim/machine/Mailbox.h"
#include "sim/machine/NotificationBoard.h"
#include "sim/machine/OpenHandles.h"
#include "sim/machine/PortTrace.h"
#include "sim/machine/Power.h"
#include "sim/machine/PropertyStore.h"
#include "sim/machine/Scheduler.h"
#include "sim/machine/Screen.h"
#include "sim/machine/Sessions.h"
#include "sim/machine/SystemFont.h"
#include "sim/machine/Timeline.h"
#include "sim/machine/UnifiedLog.h"

namespace keyrow::sim {

/// A small, deterministic Mac on virtual time: what all its processes share. It starts
/// with the hardware in the special mode, nothing stored, and nothing in front.
class SimulatedMac {
 public:
  Scheduler scheduler;
  Timeline timeline{scheduler};
  Faults faults;
  CrashPoints crashPoints;
  OpenHandles openHandles;
  HidHardware hid{timeline};
  /// Domain "NSGlobalDomain".
  PropertyStore globalPreferences{timeline, TimelineEvent::Kind::preference};
  /// One domain per bundle identifier.
  PropertyStore defaults{timeline, TimelineEvent::Kind::defaults};
  UnifiedLog log{timeline};
  Applications applications;
  Sessions sessions{applications};
  Keyboards keyboards;
  KeyboardFilters keyboardFilters{*this};
  DistributedNotifications distributedNotifications{scheduler};
  Power power{timeline};
  Screen screen{timeline, sessions};
  EventTapServer eventTaps{
      {.timeline = timeline,
       .scheduler = scheduler,
       .isProcessTrusted = isAccessibilityGranted,
       .decided = [this](std::uint32_t type, const KeyEvent& event, bool getsThrough) {
         finishKey(type, event, getsThrough);
       }}};
  PortTrace trace;

  /// Every system-defined event that was posted.
  std::vector<SystemDefinedEvent> systemDefinedEvents;

  Mailbox mailbox;
  NotificationBoard notifications;

  /// The contents of the files that were written, by path.
  std::map<std::string, std::string> files;

  /// What is in Keyrow's Info.plist: the version is that of the build.
  PropertyDictionary infoDictionary{{"CFBundleShortVersionString", KEYROW_VERSION},
                                    {"CFBundleVersion", "1"},
                                    {"SUFeedURL", "https://keyrow.example/appcast.xml"}};

  /// For whom Sparkle has been started before, by the domain of the settings.
  std::set<std::string> sparkleStarts;

  SystemFont systemFont;
  /// How high a push button is, and how much wider than its title, in points: 24 on macOS 26.
  double pushButtonExtent = 20;

  /// By user; not registered where absent.
  std::map<std::string, LoginItemStatus> loginItems;
  /// Whether the user has to approve a login item before it counts.
  bool loginItemsNeedApproval = false;

  /// Called when this user's Keyrow has said goodbye, right before it is gone.
  std::function<void(const std::string& user)> whenKeyrowQuits = [](const std::string&) {};

  /// Called for every key event when the taps have seen it: whether it reaches an application.
  std::function<void(std::uint32_t type, const KeyEvent& event, bool reaches)> whenKeyIsDecided =
      [](std::uint32_t, const KeyEvent&, bool) {};

  /// Whether a Keyrow has ended without a goodbye.
  bool hasKilledKeyrow = false;

  /// Whether Keyrow has the permissions.
  std::atomic<bool> isAccessibilityGranted = true;
  InputMonitoringConsent inputMonitoring{screen};

  /// Whether key events tell their time in nanoseconds, and not in ticks.
  bool areEventTimesNanoseconds = false;

  /// Whether a thread that is started gets to its work before anything else happens, and one
  /// that is stopped to its end.
  bool threadsRunAtOnce = true;

  /// What the HID system gives as the state of Caps Lock.
  bool isCapsLockOn = false;

  /// As on Apple silicon: a tick is 125/3 ns.
  MachTimebase machTimebase{.numer = 125, .denom = 3};

  /// An application takes the keyboard for itself, so that no event tap sees a key
  /// (`EnableSecureEventInput`), or gives it back.
  void setSecureInput(bool isOn, std::optional<std::string> holder = std::nullopt) {
    isSecureInputOn_ = isOn;
    secureInputHolder_ = std::move(holder);
    ++secureInputChangeCount_;
  }
  bool isSecureInputOn() const { return isSecureInputOn_; }
  /// Absent where macOS does not tell.
  const std::optional<std::string>& secureInputHolder() const { return secureInputHolder_; }
  std::uint64_t secureInputChangeCount() const { return secureInputChangeCount_; }

  /// Time since the machine was switched on, also while it slept.
  std::chrono::nanoseconds uptime() const;

  /// Date and time of day; the machine is switched on at 2024-03-01 08:00:00 UTC.
  std::chrono::system_clock::time_point wallClock() const;

  /// Mach absolute time in ticks, by `machTimebase`; 0 when that is no time base.
  std::uint64_t machAbsoluteTime() const;

  /// A process makes a port call, which is traced, and at which it may be killed. True when
  /// the call goes through; one that fails is on the timeline.
  bool call(PortCall call);

  /// A page of System Settings is opened in this user's session, which brings them to the front
  /// there.
  void openSystemSettings(const std::string& user);

  /// The user changes the mode in System Settings: hardware and preference at once.
  void changeModeInSystemSettings(bool standardFunctionKeys);

  /// The user gives Keyrow the Accessibility permission, or takes it away. Processes that run
  /// are told so much later; never where that is absent. A notification may announce it.
  void changeAccessibility(bool isGranted, std::optional<std::chrono::nanoseconds> lateness,
                           bool isAnnounced);

  /// How often the permission has been changed so far.
  std::size_t accessibilityChangeCount() const { return accessibilityChanges_.size(); }

  /// Whether a process is told that it has the permission that was started after so many
  /// changes of it.
  bool tellsTrust(std::size_t changesBefore) const;

  /// Lets a key event pass all taps; what gets through reaches the frontmost application,
  /// which the timeline tells, and the observers.
  void postKeyEvent(std::uint32_t type, const KeyEvent& event);

  /// Calls `handler` for every key event that reaches an application.
  Registration observeKeyEvents(std::function<void(std::uint32_t, const KeyEvent&)> handler) {
    return keyEventObservers_.add(std::move(handler));
  }

  /// Caps Lock is switched on or off, on the keyboard of that name if there is one.
  void setCapsLock(bool isOn, const std::string& keyboard);

  /// Lets a keyboard send one input of a usage page, now. It may arrive later.
  void sendInput(std::shared_ptr<const SimulatedKeyboard> keyboard, std::uint32_t usagePage,
                 std::chrono::nanoseconds lateness = {});

 private:
  void finishKey(std::uint32_t type, const KeyEvent& event, bool reaches);

  struct AccessibilityChange {
    bool wasGranted;
    /// Whether processes that ran before it are told.
    bool isTold;
  };

  bool isSecureInputOn_ = false;
  std::optional<std::string> secureInputHolder_;
  std::uint64_t secureInputChangeCount_ = 0;
  ObserverList<std::uint32_t, const KeyEvent&> keyEventObservers_;
  std::vector<AccessibilityChange> accessibilityChanges_;
};

}  // namespace keyrow::sim
