#pragma once

#include <string_view>

#include "ui/View.h"

namespace keyrow {

/// What the user does with the About pane.
class AboutActions {
 public:
  /// The controls are there.
  virtual void viewDidLoad() = 0;

  virtual void openContactEmail() = 0;
  virtual void openBugReportEmail() = 0;
  virtual void toggleEnhancedDiagnostics(bool isOn) = 0;
  virtual void toggleAutoUpdateChecks(bool isOn) = 0;
  virtual void checkForUpdates() = 0;

 protected:
  ~AboutActions() = default;
};

/// What changes in the About pane. What never does is in `AboutLayout.h`.
class AboutView : public View<AboutActions> {
 public:
  virtual void setVersion(std::string_view text) = 0;
  virtual void setEnhancedDiagnosticsChecked(bool checked) = 0;
  virtual void setAutoUpdateChecked(bool checked) = 0;
};

}  // namespace keyrow
