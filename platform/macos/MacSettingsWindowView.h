#pragma once

#import <AppKit/AppKit.h>

#include "ui/SettingsWindowView.h"

/// Controls the one settings window.
@interface KeyrowSettingsWindowController : NSWindowController
- (instancetype)initWithActions:(keyrow::SettingsWindowActions&)actions;
- (instancetype)initWithWindow:(NSWindow*)window NS_UNAVAILABLE;
@end

namespace keyrow::macos {

/// `SettingsWindowView` on `NSWindow`.
class MacSettingsWindowView final : public SettingsWindowView {
 public:
  void create(SettingsWindowActions& actions) override;
  bool hasWindow() override;
  void bringToFront() override;
  void setFixedContentSize(ContentSize size) override;

 private:
  KeyrowSettingsWindowController* controller = nil;
};

}  // namespace keyrow::macos
