#pragma once

#include "core/AppSettings.h"
#include "platform/Bundle.h"
#include "ui/AboutView.h"
#include "ui/BugReport.h"
#include "ui/SparkleUpdater.h"

namespace keyrow {

/// The rules of the About pane: what its controls show, and what using them does. Main
/// thread only.
class AboutPane {
 public:
  struct Uses {
    AboutView& view;
    AppSettings& settings;
    Bundle& bundle;
    BugReport& bugReport;
    SparkleUpdater& updater;
  };

  explicit AboutPane(const Uses& uses) : use_{uses} {}

  /// The controls are there: shows the state of everything.
  void viewDidLoad();

  void openContactEmail() { use_.bugReport.openContactEmail(); }
  void openBugReportEmail() { use_.bugReport.openBugReportEmail(); }
  void toggleEnhancedDiagnostics(bool isOn) { use_.settings.setEnhancedDiagnosticsEnabled(isOn); }
  void toggleAutoUpdateChecks(bool isOn) { use_.updater.setAutomaticChecksEnabled(isOn); }
  void checkForUpdates() { use_.updater.checkForUpdates(); }

 private:
  const Uses use_;
};

}  // namespace keyrow
