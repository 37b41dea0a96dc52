#pragma once

#include "platform/macos/MacSettingsWindowView.h"
#include "platform/macos/MacStatusItemView.h"
#include "ui/Views.h"

namespace keyrow::macos {

/// All views on AppKit.
class MacViews {
 public:
  /// Refers to this object, which has to outlive it.
  Views views() { return {.settingsWindow = settingsWindow, .statusItem = statusItem}; }

 private:
  MacSettingsWindowView settingsWindow;
  MacStatusItemView statusItem;
};

}  // namespace keyrow::macos
