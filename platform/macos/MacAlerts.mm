#include "platform/macos/MacAlerts.h"

#import <AppKit/AppKit.h>

#include "platform/macos/Conversions.h"

namespace keyrow::macos {

void MacAlerts::runModal(const Alert& alert, std::function<void(int response)> answered) {
  NSAlert* const panel = [[NSAlert alloc] init];
  panel.alertStyle = NSAlertStyleWarning;
  panel.messageText = nsString(alert.messageText);
  panel.informativeText = nsString(alert.informativeText);
  for (const auto title : alert.buttons) [panel addButtonWithTitle:nsString(title)];
  panel.window.preventsApplicationTerminationWhenModal = NO;
  answered(static_cast<int>([panel runModal]));
}

void MacAlerts::beep() { NSBeep(); }

}  // namespace keyrow::macos
