#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/MacAboutView.h"
#include "platform/macos/MacGeneralView.h"
#include "ui/SettingsWindowView.h"

@class KeyrowSettingsWindowController;

namespace keyrow::macos {

/// `SettingsWindowView` on `NSWindow`.
class MacSettingsWindowView final : public SettingsWindowView {
 public:
  /// The panes have to outlive this.
  MacSettingsWindowView(MacGeneralView& general, MacAboutView& about)
      : general_{general}, about_{about} {}

  void create(ContentSize size) override;
  bool hasWindow() override;
  void bringToFront() override;
  void selectTab(std::size_t index) override;
  void setFixedContentSize(ContentSize size) override;

  /// The window; nil before it is created.
  NSWindow* window() const;

 private:
  MacGeneralView& general_;
  MacAboutView& about_;
  KeyrowSettingsWindowController* controller_ = nil;
};

}  // namespace keyrow::macos
