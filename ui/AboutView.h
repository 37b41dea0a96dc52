#pragma once

#include <string_view>

#include "platform/Port.h"

namespace keyrow {

class AboutPane;

/// What changes in the About pane. What never does is in `AboutLayout.h`.
class AboutView : public Port {
 public:
  /// Whom the controls tell that they are there, and what the user does with them.
  virtual void setPane(AboutPane& pane) = 0;

  virtual void setVersion(std::string_view text) = 0;
  virtual void setEnhancedDiagnosticsChecked(bool checked) = 0;
  virtual void setAutoUpdateChecked(bool checked) = 0;
};

}  // namespace keyrow
