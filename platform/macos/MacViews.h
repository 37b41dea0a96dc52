#pragma once

#include "platform/macos/MacAboutView.h"
#include "platform/macos/MacGeneralView.h"
#include "platform/macos/MacSettingsWindowView.h"
#include "platform/macos/MacStatusItemView.h"
#include "ui/Views.h"

namespace keyrow::macos {

/// All views on AppKit.
class MacViews {
 public:
  /// Refers to this object, which has to outlive it.
  Views views() {
    return {.about = about,
            .general = general,
            .settingsWindow = settingsWindow,
            .statusItem = statusItem};
  }

 private:
  MacAboutView about;
  MacGeneralView general;
  MacSettingsWindowView settingsWindow{general, about};
  MacStatusItemView statusItem;
};

}  // namespace keyrow::macos
