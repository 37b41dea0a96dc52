#include "platform/macos/MacEventMonitors.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

namespace {

/// Removes the monitor; AppKit gives none when it cannot add one.
Registration registrationOf(id monitor) {
  if (!monitor) return {};
  return Registration{[monitor] { [NSEvent removeMonitor:monitor]; }};
}

}  // namespace

KeyDown keyDown(NSEvent* event) {
  return {.keyCode = event.keyCode,
          .charactersIgnoringModifiers = optionalText(event.charactersIgnoringModifiers)};
}

Registration MacEventMonitors::addGlobalFlagsMonitor(std::function<void()> handler) {
  return registrationOf([NSEvent addGlobalMonitorForEventsMatchingMask:NSEventMaskFlagsChanged
                                                               handler:^(NSEvent*) {
                                                                 handler();
                                                               }]);
}

Registration MacEventMonitors::addLocalFlagsMonitor(std::function<void()> handler) {
  return registrationOf([NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskFlagsChanged
                                                              handler:^NSEvent*(NSEvent* event) {
                                                                handler();
                                                                return event;
                                                              }]);
}

Registration MacEventMonitors::addLocalKeyDownMonitor(std::function<bool(const KeyDown&)> handler) {
  return registrationOf([NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                              handler:^NSEvent*(NSEvent* event) {
                                                                // It may remove this monitor.
                                                                const auto call = handler;
                                                                const bool consumes =
                                                                    call(keyDown(event));
                                                                return consumes ? nil : event;
                                                              }]);
}

}  // namespace keyrow::macos
