#pragma once

#import <AppKit/AppKit.h>

#include "ui/MainMenu.h"

@class KeyrowMainMenuTarget;

namespace keyrow::macos {

/// `MainMenuView` on `NSMenu`.
class MacMainMenuView final : public MainMenuView {
 public:
  void create() override;

 private:
  NSMenuItem* menuItem(const MainMenuItem& item) const;

  KeyrowMainMenuTarget* target_ = nil;
};

}  // namespace keyrow::macos
