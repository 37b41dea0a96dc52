#pragma once

#include "platform/macos/MacAboutView.h"
#include "platform/macos/MacGeneralView.h"
#include "platform/macos/MacMainMenuView.h"
#include "platform/macos/MacSettingsWindowView.h"
#include "platform/macos/MacStatusItemView.h"
#include "ui/Views.h"

namespace keyrow::macos {

/// All views on AppKit.
class MacViews {
 public:
  /// Refers to this object, which has to outlive it.
  Views views() {
    return {.about = about_,
            .general = general_,
            .mainMenu = mainMenu_,
            .settingsWindow = settingsWindow_,
            .statusItem = statusItem_};
  }

 private:
  MacAboutView about_;
  MacGeneralView general_;
  MacMainMenuView mainMenu_;
  MacSettingsWindowView settingsWindow_{general_, about_};
  MacStatusItemView statusItem_;
};

}  // namespace keyrow::macos
