#include "ui/SettingsWindowController.h"

#include <algorithm>
#include <cmath>

namespace keyrow {

void SettingsWindowController::createWindow() {
  contentSize_.height = std::max(contentSize_.height, std::ceil(use_.tallestPane()));
  use_.view.create(contentSize_);
}

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
void SettingsWindowController::viewDidAppear() { use_.view.setFixedContentSize(contentSize_); }

void SettingsWindowController::didSelectTabViewItem() {
  use_.view.setFixedContentSize(contentSize_);
}

bool SettingsWindowController::bringForward() {
  if (!use_.view.hasWindow()) return false;
  use_.application.activateAllWindows();
  use_.application.activateIgnoringOtherApps();
  use_.view.bringToFront();
  return true;
}

}  // namespace keyrow
