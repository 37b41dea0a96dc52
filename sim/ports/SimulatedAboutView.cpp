#include "sim/ports/SimulatedAboutView.h"

#include "ui/AboutLayout.h"

namespace keyrow::sim {

namespace layout = aboutLayout;

std::vector<SimulatedAboutView::Clickable> SimulatedAboutView::clickables() const {
  std::vector<Clickable> result;
  for (const auto& row : layout::rows) {
    if (const auto* checkbox = std::get_if<Checkbox>(&row.what)) {
      result.push_back(clickable(*checkbox));
    }
    const auto* control = std::get_if<layout::Control>(&row.what);
    if (!control) continue;
    switch (*control) {
      case layout::Control::appIcon:
      case layout::Control::description:
      case layout::Control::version:
        break;
      case layout::Control::contactActions:
        result.push_back(clickable(layout::contactTitle, &AboutActions::openContactEmail));
        result.push_back(clickable(layout::reportBugTitle, &AboutActions::openBugReportEmail));
        break;
      case layout::Control::checkUpdates:
        result.push_back(clickable(layout::checkUpdatesTitle, &AboutActions::checkForUpdates));
        break;
    }
  }
  return result;
}

}  // namespace keyrow::sim
