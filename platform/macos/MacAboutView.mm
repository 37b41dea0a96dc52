#include "platform/macos/MacAboutView.h"

#include "platform/macos/Controls.h"
#include "platform/macos/Conversions.h"

namespace keyrow::macos {

AboutViewController* MacAboutView::viewController() {
  if (!controller_) controller_ = [[AboutViewController alloc] initWithActions:actions()];
  return controller_;
}

double MacAboutView::fittingHeight() { return viewController().view.fittingSize.height; }

void MacAboutView::setChecked(Switch what, bool checked) {
  setOn([controller_ checkboxOf:what], checked);
}

void MacAboutView::setVersion(std::string_view text) {
  controller_.versionLabel.stringValue = nsString(text);
}

}  // namespace keyrow::macos
