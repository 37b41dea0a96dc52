#include "ui/AboutPane.h"

#include "ui/VersionText.h"

namespace keyrow {

void AboutPane::viewDidLoad() {
  use_.view.setEnhancedDiagnosticsChecked(
      use_.settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled));
  use_.view.setAutoUpdateChecked(use_.updater.automaticChecksEnabled());
  use_.view.setVersion("Version " + versionText(use_.bundle));
}

}  // namespace keyrow
