#pragma once

#include <string>
#include <vector>

#include "sim/ports/SimulatedPane.h"
#include "ui/GeneralView.h"

namespace keyrow::sim {

/// The General pane on the simulated Mac.
class SimulatedGeneralView final : public SimulatedPane<GeneralView> {
 public:
  using SimulatedPane::SimulatedPane;

  void setFnReplacementItems(std::span<const FnReplacementItem> items) override {
    fnReplacementItems.assign(items.begin(), items.end());
  }
  void selectFnReplacementItem(std::size_t index) override { selectedFnReplacementItem = index; }
  void setFnReplacementHint(std::string_view text) override { fnReplacementHint = text; }
  void setLocalShortcutTitle(std::string_view title) override { localShortcutTitle = title; }
  bool isLocalShortcutTitleCut() override;
  void setLocalShortcutWholeTitle(std::optional<std::string_view> title) override {
    localShortcutTip = title.value_or("");
  }
  void setResetLocalShortcutEnabled(bool enabled) override { isResetEnabled = enabled; }
  void setLocalShortcutHint(std::string_view text) override { localShortcutHint = text; }
  void setPermission(std::string_view buttonTitle, PermissionColor color,
                     std::string_view toolTip) override {
    permissionButtonTitle = buttonTitle;
    permissionColor = color;
    permissionToolTip = toolTip;
  }
  bool isPermissionPopoverShown() override { return isPopoverShown; }
  void showPermissionPopover() override { isPopoverShown = true; }
  void closePermissionPopover() override { isPopoverShown = false; }

  /// How high the popover's content has to be for its text, in points.
  double popoverHeight() const;

  /// The window tells where its keys go.
  void setWindowKey(bool isKey);
  /// The pane comes into sight. It is in the window only after it was about to.
  void appear();
  /// The pane goes out of sight.
  void disappear();

  /// The user chooses from the pop-up; false, and nothing happens, when there is no such item.
  bool chooseFnReplacement(std::string_view title);

  std::vector<FnReplacementItem> fnReplacementItems;
  std::size_t selectedFnReplacementItem = 0;
  std::string fnReplacementHint;
  std::string localShortcutTitle;
  /// The button's tool tip; empty for none.
  std::string localShortcutTip;
  bool isResetEnabled = true;
  std::string localShortcutHint;
  std::string permissionButtonTitle;
  PermissionColor permissionColor = PermissionColor::red;
  std::string permissionToolTip;
  bool isPopoverShown = false;

 private:
  std::vector<Clickable> clickables() const override;
  double neededHeight() const override;
  double widthOfButton(std::string_view title) const;

  bool isWindowKey_ = false;
  bool isInWindow_ = false;
};

}  // namespace keyrow::sim
