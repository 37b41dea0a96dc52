#include "platform/macos/MacAlerts.h"

#import <AppKit/AppKit.h>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

int MacAlerts::runModal(const Alert& alert) {
  NSAlert* const panel = [[NSAlert alloc] init];
  panel.alertStyle = NSAlertStyleWarning;
  panel.messageText = nsString(alert.messageText);
  panel.informativeText = nsString(alert.informativeText);
  for (const auto title : alert.buttons) [panel addButtonWithTitle:nsString(title)];
  return static_cast<int>([panel runModal]);
}

void MacAlerts::beep() { NSBeep(); }

}  // namespace keyrow::macos
