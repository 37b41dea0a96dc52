#pragma once

#import <AppKit/AppKit.h>

#include "platform/macos/DotView.h"
#include "ui/StatusItemView.h"

/// Hands what the user does with the status item on.
@interface KeyrowStatusItemTarget : NSObject <NSMenuDelegate>
- (instancetype)initWithActions:(keyrow::StatusItemActions&)actions;
@end

namespace keyrow::macos {

/// What an event is to the button that sends its action at it; none for nil.
ClickEvent clickEvent(NSEvent* event);

/// `StatusItemView` on `NSStatusItem`.
class MacStatusItemView final : public StatusItemView {
 public:
  void create() override;
  void setImage(std::string_view systemSymbolName) override;
  void setCapsLockIndicatorHidden(bool hidden) override;
  void setScopeIndicator(bool hidden, std::optional<std::string_view> toolTip) override;
  void setAccessibilityValue(std::string_view value) override;
  void announce(std::string_view text) override;
  void setHighlighted(bool highlighted) override;
  void popUpMenu(const std::vector<MenuItem>& items) override;

  /// The item's button; nil before the item is created, and where the system gives none.
  NSStatusBarButton* button() const { return statusItem_.button; }

 private:
  NSMenuItem* menuItem(const MenuItem& item) const;

  NSStatusItem* statusItem_ = nil;
  KeyrowDotView* __weak statusIndicatorView_ = nil;
  KeyrowDotView* __weak scopeIndicatorView_ = nil;
  KeyrowStatusItemTarget* target_ = nil;
};

}  // namespace keyrow::macos
