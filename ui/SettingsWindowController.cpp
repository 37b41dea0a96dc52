#include "ui/SettingsWindowController.h"

namespace keyrow {

void SettingsWindowController::show() {
  if (!bringForward()) return;
  mainQueue_.async([this, weak = std::weak_ptr{alive_}] {
    if (!weak.expired()) bringForward();
  });
}

// The system sizes the window for each tab as it sees fit.
void SettingsWindowController::viewDidAppear() { window_.setFixedContentSize(settingsContentSize); }

void SettingsWindowController::didSelectTabViewItem() {
  window_.setFixedContentSize(settingsContentSize);
}

bool SettingsWindowController::bringForward() {
  if (!window_.hasWindow()) return false;
  application_.activateAllWindows();
  application_.activate();
  window_.bringToFront();
  return true;
}

}  // namespace keyrow
