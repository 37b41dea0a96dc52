#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "platform/PropertyValue.h"
#include "ui/FnReplacementMenu.h"
#include "ui/PaneView.h"

namespace keyrow {

/// The colour of the dot that tells whether a permission is missing.
enum class PermissionColor {
  /// `systemGreenColor`.
  green,
  /// `systemRedColor`.
  red,
};

/// What the user does with the General pane.
class GeneralActions : public PaneActions {
 public:
  /// An item was chosen; its represented object says which. Whatever is no modifier is Off.
  virtual void changeFnReplacementModifier(
      const std::optional<PropertyValue>& representedObject) = 0;

  /// The pane is in its window, and can be seen (`viewDidAppear`).
  virtual void viewDidAppear() = 0;
  /// The pane goes out of sight: another tab was selected, or its window was closed
  /// (`viewWillDisappear`).
  virtual void viewWillDisappear() = 0;
  /// Keys do not go to its window any more (`NSWindowDidResignKeyNotification`).
  virtual void windowDidResignKey() = 0;

  /// Lets the next key become the per-app shortcut, or stops waiting for it.
  virtual void toggleLocalShortcutCapture() = 0;
  virtual void resetLocalShortcut() = 0;

  /// The button that leads to the permission.
  virtual void openPermissions() = 0;
  virtual void showAXPermissionHelp() = 0;
  virtual void quitApp() = 0;

 protected:
  ~GeneralActions() = default;
};

/// What changes in the General pane. What never does is in `GeneralLayout.h`.
class GeneralView : public PaneView<GeneralActions> {
 public:
  /// Empties the pop-up and fills it.
  virtual void setFnReplacementItems(std::span<const FnReplacementItem> items) = 0;
  /// Selects an item by its place, separators counted.
  virtual void selectFnReplacementItem(std::size_t index) = 0;
  virtual void setFnReplacementHint(std::string_view text) = 0;

  virtual void setLocalShortcutTitle(std::string_view title) = 0;
  /// Whether the row has too little room for that title. Not known, so false, where the pane is in
  /// no window.
  virtual bool isLocalShortcutTitleCut() = 0;
  /// The button's tool tip and accessibility label; absent for no tool tip, and for
  /// `generalLayout::localShortcutTitle` as the label.
  virtual void setLocalShortcutWholeTitle(std::optional<std::string_view> title) = 0;
  virtual void setResetLocalShortcutEnabled(bool enabled) = 0;
  virtual void setLocalShortcutHint(std::string_view text) = 0;

  /// The title of the button, and the colour and the tool tip of the dot beside it.
  virtual void setPermission(std::string_view buttonTitle, PermissionColor color,
                             std::string_view toolTip) = 0;

  virtual bool isPermissionPopoverShown() = 0;
  /// Shows the popover at the help button's max-Y edge; it is made at the first time.
  virtual void showPermissionPopover() = 0;
  virtual void closePermissionPopover() = 0;
};

}  // namespace keyrow
