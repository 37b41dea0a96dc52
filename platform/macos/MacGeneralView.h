#pragma once

#include "platform/macos/GeneralViewController.h"
#include "ui/GeneralView.h"

namespace keyrow::macos {

/// `GeneralView` on the controls of a `GeneralViewController`.
class MacGeneralView final : public GeneralView {
 public:
  void setChecked(Switch what, bool checked) override;
  double fittingHeight() override;
  void setFnReplacementItems(std::span<const FnReplacementItem> items) override;
  void selectFnReplacementItem(std::size_t index) override;
  void setFnReplacementHint(std::string_view text) override;
  void setLocalShortcutTitle(std::string_view title) override;
  bool isLocalShortcutTitleCut() override;
  void setLocalShortcutWholeTitle(std::optional<std::string_view> title) override;
  void setResetLocalShortcutEnabled(bool enabled) override;
  void setLocalShortcutHint(std::string_view text) override;
  void setPermission(std::string_view buttonTitle, PermissionColor color,
                     std::string_view toolTip) override;
  bool isPermissionPopoverShown() override;
  void showPermissionPopover() override;
  void closePermissionPopover() override;

  /// The pane's controller, made at the first time.
  GeneralViewController* viewController();

 private:
  GeneralViewController* controller_ = nil;
};

}  // namespace keyrow::macos
