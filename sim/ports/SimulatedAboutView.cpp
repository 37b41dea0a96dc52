#include "sim/ports/SimulatedAboutView.h"

#include "ui/AboutLayout.h"

namespace keyrow::sim {

void SimulatedAboutView::load() {
  if (isLoaded_) return;
  isLoaded_ = true;
  pane_->viewDidLoad();
}

bool SimulatedAboutView::click(std::string_view title) {
  namespace layout = aboutLayout;
  std::function<void(AboutPane&)> action;
  if (title == layout::contactTitle) {
    action = [](AboutPane& pane) { pane.openContactEmail(); };
  } else if (title == layout::reportBugTitle) {
    action = [](AboutPane& pane) { pane.openBugReportEmail(); };
  } else if (title == layout::enhancedDiagnosticsTitle) {
    // A click changes a checkbox by itself; its action says what it stands at now.
    isEnhancedDiagnosticsChecked = !isEnhancedDiagnosticsChecked;
    action = [on = isEnhancedDiagnosticsChecked](AboutPane& pane) {
      pane.toggleEnhancedDiagnostics(on);
    };
  } else if (title == layout::autoUpdateTitle) {
    isAutoUpdateChecked = !isAutoUpdateChecked;
    action = [on = isAutoUpdateChecked](AboutPane& pane) { pane.toggleAutoUpdateChecks(on); };
  } else if (title == layout::checkUpdatesTitle) {
    action = [](AboutPane& pane) { pane.checkForUpdates(); };
  } else {
    return false;
  }
  context_.mainThread->deliver([this, action] { action(*pane_); });
  return true;
}

}  // namespace keyrow::sim
