#include "sim/ports/SimulatedAboutView.h"

#include "ui/AboutLayout.h"

namespace keyrow::sim {

namespace layout = aboutLayout;

double SimulatedAboutView::neededHeight() const {
  const auto heightOf = [this](layout::Control control) {
    switch (control) {
      case layout::Control::appIcon:
        return layout::iconSize;
      case layout::Control::description:
        return SystemFont::lineHeight(FontSize::system) *
               context().mac.systemFont.lineCount(layout::descriptionText, FontSize::system,
                                                  paneTextWidth);
      case layout::Control::version:
        return SystemFont::lineHeight(FontSize::small);
      case layout::Control::contactActions:
      case layout::Control::checkUpdates:
        break;
    }
    return context().mac.pushButtonExtent;
  };
  return heightOfRows(layout::rows, layout::hintMaximumLines, heightOf) + layout::bottomGap;
}

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
