#pragma once

#include "platform/macos/AboutViewController.h"
#include "ui/AboutView.h"

namespace keyrow::macos {

/// `AboutView` on the controls of an `AboutViewController`.
class MacAboutView final : public AboutView {
 public:
  void setVersion(std::string_view text) override;
  void setEnhancedDiagnosticsChecked(bool checked) override;
  void setAutoUpdateChecked(bool checked) override;

  /// The pane's controller, made at the first time.
  AboutViewController* viewController();

 private:
  AboutViewController* controller_ = nil;
};

}  // namespace keyrow::macos
