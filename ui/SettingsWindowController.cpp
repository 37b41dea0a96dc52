#include "ui/SettingsWindowController.h"

namespace keyrow {

void SettingsWindowController::show() {
  if (!bringForward()) return;
  use_.mainQueue.async([this, weak = std::weak_ptr{alive_}] {
    if (!weak.expired()) bringForward();
  });
}

void SettingsWindowController::showAbout() {
  if (use_.view.hasWindow()) use_.view.selectTab(aboutTabIndex);
  show();
}

// The system sizes the window for each tab as it sees fit.
void SettingsWindowController::viewDidAppear() {
  use_.view.setFixedContentSize(settingsContentSize);
}

void SettingsWindowController::didSelectTabViewItem() {
  use_.view.setFixedContentSize(settingsContentSize);
}

bool SettingsWindowController::bringForward() {
  if (!use_.view.hasWindow()) return false;
  use_.application.activateAllWindows();
  use_.application.activateIgnoringOtherApps();
  use_.view.bringToFront();
  return true;
}

}  // namespace keyrow
