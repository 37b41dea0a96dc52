#pragma once

#include "core/AppSettings.h"
#include "platform/Bundle.h"
#include "ui/AboutView.h"
#include "ui/BugReport.h"
#include "ui/SparkleUpdater.h"

namespace keyrow {

/// The rules of the About pane: what its controls show, and what using them does. Main
/// thread only.
class AboutPane final : public AboutActions {
 public:
  struct Uses {
    AboutView& view;
    AppSettings& settings;
    Bundle& bundle;
    BugReport& bugReport;
    SparkleUpdater& updater;
  };

  explicit AboutPane(const Uses& uses) : use_{uses} {}

  /// Shows the state of everything.
  void viewDidLoad() override;

  void openContactEmail() override { use_.bugReport.openContactEmail(); }
  void openBugReportEmail() override { use_.bugReport.openBugReportEmail(); }
  void toggleEnhancedDiagnostics(bool isOn) override {
    use_.settings.set(BooleanSetting::enhancedDiagnosticsEnabled, isOn);
  }
  void toggleAutoUpdateChecks(bool isOn) override { use_.updater.setAutomaticChecksEnabled(isOn); }
  void checkForUpdates() override { use_.updater.checkForUpdates(); }

 private:
  const Uses use_;
};

}  // namespace keyrow
