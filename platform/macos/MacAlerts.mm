#import <AppKit/AppKit.h>

#include <functional>
#include <memory>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacAlerts final : public Alerts {
 public:
  void runModal(const Alert& alert, std::function<void(int response)> answered) override {
    NSAlert* const panel = [[NSAlert alloc] init];
    panel.alertStyle = NSAlertStyleWarning;
    panel.messageText = nsString(alert.messageText);
    panel.informativeText = nsString(alert.informativeText);
    for (const auto title : alert.buttons) [panel addButtonWithTitle:nsString(title)];
    panel.window.preventsApplicationTerminationWhenModal = alert.preventsTermination;
    answered(static_cast<int>([panel runModal]));
  }

  void beep() override { NSBeep(); }
};

}  // namespace

std::unique_ptr<Alerts> makeAlerts() { return std::make_unique<MacAlerts>(); }

}  // namespace keyrow::macos
