#include "ui/AboutPane.h"

#include "ui/VersionText.h"

namespace keyrow {

void AboutPane::viewDidLoad() {
  view_.setEnhancedDiagnosticsChecked(settings_.enhancedDiagnosticsEnabled());
  view_.setAutoUpdateChecked(updater_.automaticChecksEnabled());
  view_.setVersion("Version " + versionText(bundle_));
}

}  // namespace keyrow
