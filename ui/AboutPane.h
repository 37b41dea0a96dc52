#pragma once

#include "platform/Application.h"
#include "platform/Bundle.h"
#include "platform/NotificationCenter.h"
#include "ui/AboutView.h"
#include "ui/BugReport.h"
#include "ui/SparkleUpdater.h"
#include "ui/Switches.h"

namespace keyrow {

/// The rules of the About pane: what its controls show, and what using them does. Main
/// thread only.
class AboutPane final : public AboutActions {
 public:
  struct Uses {
    AboutView& view;
    Switches& switches;
    Bundle& bundle;
    BugReport& bugReport;
    SparkleUpdater& updater;
    NotificationCenter& notificationCenter;
  };

  explicit AboutPane(const Uses& uses) : use_{uses} {}

  /// Shows the state of everything, and follows what can be switched elsewhere from now on.
  void viewDidLoad() override;
  void viewWillAppear() override;

  /// How high its tallest state is, in points: it has only one.
  double tallestHeight() { return use_.view.fittingHeight(); }

  void toggle(Switch what, bool isOn) override;
  void openContactEmail() override { use_.bugReport.openContactEmail(); }
  void openBugReportEmail() override { use_.bugReport.openBugReportEmail(); }
  void checkForUpdates() override { use_.updater.checkForUpdates(); }

 private:
  void showSwitches();

  const Uses use_;
  ObserverToken activeObserver_;
  ObserverToken settingsObserver_;
};

}  // namespace keyrow
