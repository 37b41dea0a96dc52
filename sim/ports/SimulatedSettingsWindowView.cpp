#include "sim/ports/SimulatedSettingsWindowView.h"

#include <algorithm>
#include <utility>

namespace keyrow::sim {

namespace {

/// The size that the system gives the window for a tab, as long as nobody objects.
constexpr ContentSize fittingSize{300, 200};

}  // namespace

SimulatedSettingsWindowView::SimulatedSettingsWindowView(const ProcessContext& context,
                                                         SimulatedGeneralView& general,
                                                         SimulatedAboutView& about)
    : context_{context},
      general_{general},
      about_{about},
      activations_{context.mac.applications.observeActivation([this] { updateKey(); })},
      alerts_{context.mac.screen.observeAlerts([this] { updateKey(); })} {}

void SimulatedSettingsWindowView::create(ContentSize size) {
  context_.mac.trace.add("create settings window");
  contentSize_ = size;
  ++createdCount_;
}

void SimulatedSettingsWindowView::bringToFront() {
  context_.mac.trace.add("bring settings window to the front");
  ++broughtToFrontCount_;
  if (isOrderedIn_ && !isMiniaturized_) return;
  const bool isAppearing = !std::exchange(isOrderedIn_, true);
  isMiniaturized_ = false;
  if (isVisible()) noteShown();
  if (!isAppearing) return updateKey();
  contentSize_ = fittingSize;
  showSelectedPane();
  updateKey();
  actions().viewDidAppear();
}

void SimulatedSettingsWindowView::miniaturize() {
  isMiniaturized_ = true;
  context_.mac.screen.note("settings window minimized");
  updateKey();
}

void SimulatedSettingsWindowView::setApplicationHidden(bool isHidden) {
  if (std::exchange(isApplicationHidden_, isHidden) == isHidden) return;
  if (isOrderedIn_ && isHidden) context_.mac.screen.note("settings window hidden");
  if (isVisible()) noteShown();
  updateKey();
}

void SimulatedSettingsWindowView::keyDown() {
  if (isKey()) context_.mac.screen.note("beep");
}

std::string_view SimulatedSettingsWindowView::stateName() const {
  if (!isOrderedIn_) return "closed";
  if (isMiniaturized_) return "minimized";
  return isApplicationHidden_ ? "hidden" : selectedTab().title;
}

void SimulatedSettingsWindowView::noteShown() {
  context_.mac.screen.note("settings window, " + std::string{selectedTab().title});
}

void SimulatedSettingsWindowView::setFixedContentSize(ContentSize size) { contentSize_ = size; }

void SimulatedSettingsWindowView::touch() {
  if (context_.mac.applications.frontmost() == context_.bundleIdentifier) return;
  context_.mac.applications.activate(context_.bundleIdentifier);
}

bool SimulatedSettingsWindowView::selectTab(std::string_view title) {
  const auto found = std::ranges::find(settingsTabs, title, &SettingsTab::title);
  if (found == settingsTabs.end()) return false;
  context_.mainThread->deliver(
      [this, index = static_cast<std::size_t>(found - settingsTabs.begin())] { selectTab(index); });
  return true;
}

void SimulatedSettingsWindowView::selectTab(std::size_t index) {
  if (index == selectedIndex_) return;
  if (isOrderedIn_ && selectedIndex_ == 0) general_.disappear();
  selectedIndex_ = index;
  if (isVisible()) noteShown();
  contentSize_ = fittingSize;
  if (isOrderedIn_) showSelectedPane();
  actions().didSelectTabViewItem();
}

void SimulatedSettingsWindowView::showSelectedPane() {
  if (selectedIndex_ == 0) {
    general_.appear();
  } else {
    about_.appear();
  }
}

void SimulatedSettingsWindowView::close() {
  if (!isOrderedIn_) return;
  isOrderedIn_ = false;
  context_.mac.screen.note("settings window closed");
  updateKey();
  if (selectedIndex_ == 0) general_.disappear();
}

bool SimulatedSettingsWindowView::isKey() const {
  return isVisible() &&
         context_.mac.sessions.frontmost(context_.user) == context_.bundleIdentifier &&
         !context_.mac.screen.openAlertOf(context_.processID);
}

void SimulatedSettingsWindowView::updateKey() { general_.setWindowKey(isKey()); }

}  // namespace keyrow::sim
