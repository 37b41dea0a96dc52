#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/MacAboutView.h"
#include "platform/macos/MacGeneralView.h"
#include "ui/SettingsWindowView.h"

/// Controls the one settings window.
@interface KeyrowSettingsWindowController : NSWindowController
- (instancetype)initWithActions:(keyrow::SettingsWindowActions&)actions
                          panes:(NSArray<NSViewController*>*)panes;
- (instancetype)initWithWindow:(NSWindow*)window NS_UNAVAILABLE;
@end

namespace keyrow::macos {

/// `SettingsWindowView` on `NSWindow`.
class MacSettingsWindowView final : public SettingsWindowView {
 public:
  /// The panes have to outlive this.
  MacSettingsWindowView(MacGeneralView& general, MacAboutView& about)
      : general_{general}, about_{about} {}

  void create() override;
  bool hasWindow() override;
  void bringToFront() override;
  void setFixedContentSize(ContentSize size) override;

  /// The window; nil before it is created.
  NSWindow* window() const { return controller_.window; }

 private:
  MacGeneralView& general_;
  MacAboutView& about_;
  KeyrowSettingsWindowController* controller_ = nil;
};

}  // namespace keyrow::macos
