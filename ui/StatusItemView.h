#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/PropertyValue.h"
#include "ui/StatusMenu.h"
#include "ui/View.h"

namespace keyrow {

/// The event at which the status item's button sends its action (`NSEventType`).
enum class ClickEvent {
  /// None: VoiceOver has pressed it.
  none,
  leftMouseUp,
  rightMouseDown,
  /// Every other type, such as that of a key.
  other,
};

/// What the user does with the status item.
class StatusItemActions {
 public:
  virtual void statusBarButtonClicked(ClickEvent event, bool isControlHeld) = 0;

  /// The action "Show Menu", which assistive technology offers with the button, and whose end it
  /// waits for.
  virtual void showMenu() = 0;

  /// A mode was chosen in the menu; the item's represented object says which, if it is
  /// 0 or 1.
  virtual void handleMenuGlobalSwitch(const std::optional<PropertyValue>& representedObject) = 0;
  virtual void handleMenuLocalSwitch(const std::optional<PropertyValue>& representedObject) = 0;
  virtual void openPreferences() = 0;
  virtual void quit() = 0;
  virtual void menuDidClose() = 0;

 protected:
  ~StatusItemActions() = default;
};

/// The look of the two indicators, round dots at the same place on the button, in points.
struct StatusIndicatorLayout {
  double diameter = 6;
  /// From the button's trailing edge to the dot's leading edge.
  double leadingToButtonTrailing = -1;
};

/// A colour in the calibrated RGB space.
struct CalibratedColor {
  double red;
  double green;
  double blue;
  double alpha;
};
inline constexpr CalibratedColor capsLockIndicatorColor{0.26, 1.0, 0.36, 1.0};

/// Where the menu's top left corner lies on the button, in points from its left edge.
inline constexpr double statusMenuX = 6;

/// The name of the action that opens the menu for those who cannot click.
inline constexpr std::string_view showMenuActionName = "Show Menu";

/// The square item in the menu bar (`NSStatusItem`), with its button and two indicators.
/// Before `create`, and where the system gives no item, the other calls do nothing.
class StatusItemView : public View<StatusItemActions> {
 public:
  /// Creates the item with both indicators hidden.
  virtual void create() = 0;

  /// Shows a system symbol as a template image, without an accessibility description.
  virtual void setImage(std::string_view systemSymbolName) = 0;

  /// The Caps Lock indicator, filled with `capsLockIndicatorColor`.
  virtual void setCapsLockIndicatorHidden(bool hidden) = 0;

  /// The override indicator, filled with the system blue; an absent tool tip clears it.
  virtual void setScopeIndicator(bool hidden, std::optional<std::string_view> toolTip) = 0;

  /// What assistive technology says of the button's state (`accessibilityValue`). That it has
  /// changed is told (`NSAccessibilityValueChangedNotification`), and spoken only where the user
  /// is at it.
  virtual void setAccessibilityValue(std::string_view value) = 0;

  /// Lets VoiceOver speak a text now (`NSAccessibilityAnnouncementRequestedNotification`).
  virtual void announce(std::string_view text) = 0;

  virtual void setHighlighted(bool highlighted) = 0;

  /// Pops up a menu at the button, light or dark as the button is, and comes back when
  /// it has closed.
  virtual void popUpMenu(const std::vector<MenuItem>& items) = 0;
};

}  // namespace keyrow
