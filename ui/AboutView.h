#pragma once

#include <string_view>

#include "ui/PaneView.h"

namespace keyrow {

/// What the user does with the About pane.
class AboutActions : public PaneActions {
 public:
  virtual void openContactEmail() = 0;
  virtual void openBugReportEmail() = 0;
  virtual void checkForUpdates() = 0;

 protected:
  ~AboutActions() = default;
};

/// What changes in the About pane. What never does is in `AboutLayout.h`.
class AboutView : public PaneView<AboutActions> {
 public:
  virtual void setVersion(std::string_view text) = 0;
};

}  // namespace keyrow
