#include "sim/ports/SimulatedAboutView.h"

#include "ui/AboutLayout.h"

namespace keyrow::sim {

void SimulatedAboutView::load() {
  if (isLoaded_) return;
  isLoaded_ = true;
  actions().viewDidLoad();
}

bool SimulatedAboutView::click(std::string_view title) {
  namespace layout = aboutLayout;
  std::function<void(AboutActions&)> action;
  if (title == layout::contactTitle) {
    action = [](AboutActions& actions) { actions.openContactEmail(); };
  } else if (title == layout::reportBugTitle) {
    action = [](AboutActions& actions) { actions.openBugReportEmail(); };
  } else if (title == layout::enhancedDiagnosticsTitle) {
    // A click changes a checkbox by itself; its action says what it stands at now.
    isEnhancedDiagnosticsChecked = !isEnhancedDiagnosticsChecked;
    action = [on = isEnhancedDiagnosticsChecked](AboutActions& actions) {
      actions.toggleEnhancedDiagnostics(on);
    };
  } else if (title == layout::autoUpdateTitle) {
    isAutoUpdateChecked = !isAutoUpdateChecked;
    action = [on = isAutoUpdateChecked](AboutActions& actions) {
      actions.toggleAutoUpdateChecks(on);
    };
  } else if (title == layout::checkUpdatesTitle) {
    action = [](AboutActions& actions) { actions.checkForUpdates(); };
  } else {
    return false;
  }
  context_.mainThread->deliver([this, action] { action(actions()); });
  return true;
}

}  // namespace keyrow::sim
