#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

#include "platform/Port.h"
#include "ui/FnReplacementMenu.h"

namespace keyrow {

class GeneralPane;

/// The colour of the dot that tells about the Accessibility permission.
enum class PermissionColor {
  /// `systemGreenColor`.
  green,
  /// `systemRedColor`.
  red,
};

/// What changes in the General pane. What never does is in `GeneralLayout.h`.
class GeneralView : public Port {
 public:
  /// Whom the controls tell that they are there, and what the user does with them.
  virtual void setPane(GeneralPane& pane) = 0;

  virtual void setLoginItemChecked(bool checked) = 0;
  virtual void setCapsLockIndicatorChecked(bool checked) = 0;
  virtual void setExternalFunctionKeysChecked(bool checked) = 0;

  /// Empties the pop-up and fills it.
  virtual void setFnReplacementItems(std::span<const FnReplacementItem> items) = 0;
  /// Selects an item by its place, separators counted.
  virtual void selectFnReplacementItem(std::size_t index) = 0;
  virtual void setFnReplacementHint(std::string_view text) = 0;

  virtual void setLocalShortcutTitle(std::string_view title) = 0;
  virtual void setResetLocalShortcutEnabled(bool enabled) = 0;
  virtual void setLocalShortcutHint(std::string_view text) = 0;

  virtual void setPermissionIndicator(PermissionColor color, std::string_view toolTip) = 0;

  virtual bool isPermissionPopoverShown() = 0;
  /// Shows the popover at the help button's max-Y edge; it is made at the first time.
  virtual void showPermissionPopover() = 0;
  virtual void closePermissionPopover() = 0;
};

}  // namespace keyrow
