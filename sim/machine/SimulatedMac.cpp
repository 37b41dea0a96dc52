#include "sim/machine/SimulatedMac.h"

#include <ranges>
#include <string>
#include <utility>

#include "platform/GlobalPreferences.h"
#include "platform/HidSystem.h"
#include "platform/VirtualKeys.h"
#include "sim/machine/KeyText.h"

namespace keyrow::sim {

std::chrono::system_clock::time_point SimulatedMac::wallClock() const {
  using namespace std::chrono;
  constexpr sys_days switchedOn{2024y / March / 1};
  return switchedOn + 8h + floor<system_clock::duration>(uptime());
}

std::chrono::nanoseconds SimulatedMac::uptime() const {
  return scheduler.now() + power.timeAsleep();
}

std::uint64_t SimulatedMac::machAbsoluteTime() const {
  if (machTimebase.numer == 0) return 0;
  return static_cast<std::uint64_t>(scheduler.now().count()) * machTimebase.denom /
         machTimebase.numer;
}

bool SimulatedMac::call(PortCall call) {
  trace.add(info(call).name);
  crashPoints.pass();
  if (!faults.strikes(call)) return true;
  timeline.add(TimelineEvent::Kind::fault, {std::string{info(call).name}});
  return false;
}

void SimulatedMac::openSystemSettings(const std::string& user) {
  // It takes the window server a moment.
  scheduler.schedule(Scheduler::Duration{0}, [this, user] {
    constexpr auto systemSettings = "com.apple.systempreferences";
    const bool isInFront = applications.frontmost() == systemSettings;
    if (user == sessions.active() && !isInFront) applications.activate(systemSettings);
  });
}

void SimulatedMac::changeModeInSystemSettings(bool standardFunctionKeys) {
  hid.setParameter(hidFKeyModeKey, standardFunctionKeys ? 1 : 0);
  globalPreferences.setValue(Sessions::domain(sessions.active(), GlobalPreferences::domain),
                             "com.apple.keyboard.fnState", standardFunctionKeys);
}

void SimulatedMac::changeAccessibility(bool isGranted,
                                       std::optional<std::chrono::nanoseconds> lateness,
                                       bool isAnnounced) {
  accessibilityChanges_.push_back({.wasGranted = isAccessibilityGranted, .isTold = false});
  isAccessibilityGranted = isGranted;
  if (lateness) {
    scheduler.schedule(*lateness, [this, count = accessibilityChanges_.size()] {
      for (auto& change : accessibilityChanges_ | std::views::take(count)) change.isTold = true;
    });
  }
  if (isAnnounced) distributedNotifications.post({.name = "com.apple.accessibility.api"});
}

bool SimulatedMac::tellsTrust(std::size_t changesBefore) const {
  for (const auto& change : accessibilityChanges_ | std::views::drop(changesBefore)) {
    if (!change.isTold) return change.wasGranted;
  }
  return isAccessibilityGranted;
}

void SimulatedMac::postKeyEvent(std::uint32_t type, const KeyEvent& event) {
  auto tapped = event;
  if (areEventTimesNanoseconds) {
    tapped.timestamp = static_cast<std::uint64_t>(scheduler.now().count());
  }
  const auto reaches = isSecureInputOn() ? std::optional{true} : eventTaps.post(type, tapped);
  if (reaches) finishKey(type, event, *reaches);
}

void SimulatedMac::finishKey(std::uint32_t type, const KeyEvent& event, bool reaches) {
  whenKeyIsDecided(type, event, reaches);
  if (!reaches) return;
  timeline.add(TimelineEvent::Kind::key,
               {quoted(keyEventText(type, event) + " reaches " + applications.nameOfFrontmost())});
  keyEventObservers_.notify(type, event);
}

void SimulatedMac::setCapsLock(bool isOn, const std::string& keyboard) {
  isCapsLockOn = isOn;
  keyboards.setProperty(keyboard, "HIDCapsLockState", isOn);
  postKeyEvent(keyEventType::flagsChanged, {.timestamp = machAbsoluteTime(),
                                            .flags = isOn ? keyEventFlag::alphaShift : 0,
                                            .keyCode = virtualKey::capsLock});
}

void SimulatedMac::sendInput(std::shared_ptr<const SimulatedKeyboard> keyboard,
                             std::uint32_t usagePage, std::chrono::nanoseconds lateness) {
  const KeyboardInput input{std::move(keyboard), usagePage, machAbsoluteTime()};
  if (lateness.count() == 0) {
    keyboards.deliver(input);
  } else {
    scheduler.schedule(lateness, [this, input] { keyboards.deliver(input); });
  }
}

}  // namespace keyrow::sim
