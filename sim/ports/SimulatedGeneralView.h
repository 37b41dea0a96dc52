#pragma once

#include <string>
#include <vector>

#include "sim/ports/ProcessContext.h"
#include "ui/GeneralView.h"

namespace keyrow::sim {

/// The controls of the General pane, and the user's hands on them.
class SimulatedGeneralView final : public GeneralView {
 public:
  explicit SimulatedGeneralView(const ProcessContext& context) : context_{context} {}

  void setLoginItemChecked(bool checked) override { isLoginItemChecked = checked; }
  void setCapsLockIndicatorChecked(bool checked) override { isCapsLockIndicatorChecked = checked; }
  void setExternalFunctionKeysChecked(bool checked) override {
    isExternalFunctionKeysChecked = checked;
  }
  void setFnReplacementItems(std::span<const FnReplacementItem> items) override {
    fnReplacementItems.assign(items.begin(), items.end());
  }
  void selectFnReplacementItem(std::size_t index) override { selectedFnReplacementItem = index; }
  void setFnReplacementHint(std::string_view text) override { fnReplacementHint = text; }
  void setLocalShortcutTitle(std::string_view title) override { localShortcutTitle = title; }
  void setResetLocalShortcutEnabled(bool enabled) override { isResetEnabled = enabled; }
  void setLocalShortcutHint(std::string_view text) override { localShortcutHint = text; }
  void setPermissionIndicator(PermissionColor color, std::string_view toolTip) override {
    permissionColor = color;
    permissionToolTip = toolTip;
  }
  bool isPermissionPopoverShown() override { return isPopoverShown; }
  void showPermissionPopover() override { isPopoverShown = true; }
  void closePermissionPopover() override { isPopoverShown = false; }

  /// The pane is looked at for the first time.
  void load();

  /// The user clicks the control with this title; false when there is none, or when it is
  /// disabled.
  bool click(std::string_view title);

  /// The user chooses from the pop-up; false when there is no such item.
  bool chooseFnReplacement(std::string_view title);

  /// For what the user does that needs no control, or a wrong one.
  using GeneralView::actions;

  bool isLoginItemChecked = false;
  bool isCapsLockIndicatorChecked = false;
  bool isExternalFunctionKeysChecked = false;
  std::vector<FnReplacementItem> fnReplacementItems;
  std::size_t selectedFnReplacementItem = 0;
  std::string fnReplacementHint;
  std::string localShortcutTitle;
  bool isResetEnabled = true;
  std::string localShortcutHint;
  PermissionColor permissionColor = PermissionColor::red;
  std::string permissionToolTip;
  bool isPopoverShown = false;

 private:
  const ProcessContext& context_;
  bool isLoaded_ = false;
};

}  // namespace keyrow::sim
