#include "platform/macos/MacEventMonitors.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

KeyDown keyDown(NSEvent* event) {
  return {.keyCode = event.keyCode,
          .charactersIgnoringModifiers = optionalText(event.charactersIgnoringModifiers),
          .characters = optionalText(event.characters),
          .flags = event.modifierFlags,
          .isRepeat = static_cast<bool>(event.ARepeat)};
}

namespace {

/// Removes the monitor; AppKit gives none when it cannot add one.
Registration registrationOf(id monitor) {
  if (!monitor) return {};
  return Registration{[monitor] { [NSEvent removeMonitor:monitor]; }};
}

class MacEventMonitors final : public EventMonitors {
 public:
  Registration addGlobalFlagsMonitor(std::function<void()> handler) override {
    return registrationOf([NSEvent addGlobalMonitorForEventsMatchingMask:NSEventMaskFlagsChanged
                                                                 handler:^(NSEvent*) {
                                                                   handler();
                                                                 }]);
  }

  Registration addLocalFlagsMonitor(std::function<void()> handler) override {
    return registrationOf([NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskFlagsChanged
                                                                handler:^NSEvent*(NSEvent* event) {
                                                                  handler();
                                                                  return event;
                                                                }]);
  }

  Registration addLocalKeyDownMonitor(std::function<bool(const KeyDown&)> handler) override {
    return registrationOf([NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                                handler:^NSEvent*(NSEvent* event) {
                                                                  // It may remove this monitor.
                                                                  const auto call = handler;
                                                                  const bool consumes =
                                                                      call(keyDown(event));
                                                                  return consumes ? nil : event;
                                                                }]);
  }
};

}  // namespace

std::unique_ptr<EventMonitors> makeEventMonitors() { return std::make_unique<MacEventMonitors>(); }

}  // namespace keyrow::macos
