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
  AboutPane(AboutView& view, AppSettings& settings, Bundle& bundle, BugReport& bugReport,
            SparkleUpdater& updater)
      : view_{view},
        settings_{settings},
        bundle_{bundle},
        bugReport_{bugReport},
        updater_{updater} {}

  /// The controls are there: shows the state of everything.
  void viewDidLoad();

  void openContactEmail() { bugReport_.openContactEmail(); }
  void openBugReportEmail() { bugReport_.openBugReportEmail(); }
  void toggleEnhancedDiagnostics(bool isOn) { settings_.setEnhancedDiagnosticsEnabled(isOn); }
  void toggleAutoUpdateChecks(bool isOn) { updater_.setAutomaticChecksEnabled(isOn); }
  void checkForUpdates() { updater_.checkForUpdates(); }

 private:
  AboutView& view_;
  AppSettings& settings_;
  Bundle& bundle_;
  BugReport& bugReport_;
  SparkleUpdater& updater_;
};

}  // namespace keyrow
