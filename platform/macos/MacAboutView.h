#pragma once

#include "platform/macos/AboutViewController.h"
#include "ui/AboutView.h"

namespace keyrow::macos {

/// `AboutView` on the controls of an `AboutViewController`.
class MacAboutView final : public AboutView {
 public:
  void setChecked(Switch what, bool checked) override;
  double fittingHeight() override;
  void setVersion(std::string_view text) override;

  /// The pane's controller, made at the first time.
  AboutViewController* viewController();

 private:
  AboutViewController* controller_ = nil;
};

}  // namespace keyrow::macos
