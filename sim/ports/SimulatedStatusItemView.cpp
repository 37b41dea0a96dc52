#include "sim/ports/SimulatedStatusItemView.h"

#include <algorithm>
#include <utility>

namespace keyrow::sim {

void SimulatedStatusItemView::create() {
  context_.mac.trace.add("create status item");
  exists_ = true;
}

void SimulatedStatusItemView::setImage(std::string_view systemSymbolName) {
  if (!exists()) return;
  const auto before = std::exchange(image_, systemSymbolName);
  change("image", before, image_);
}

void SimulatedStatusItemView::setCapsLockIndicatorHidden(bool hidden) {
  if (!exists()) return;
  const auto before = dot();
  isCapsLockIndicatorHidden_ = hidden;
  change("dot", before, dot());
}

void SimulatedStatusItemView::setScopeIndicator(bool hidden,
                                                std::optional<std::string_view> toolTip) {
  if (!exists()) return;
  const auto before = dot();
  const auto toolTipBefore = toolTipText();
  isScopeIndicatorHidden_ = hidden;
  scopeToolTip_ = toolTip;
  change("dot", before, dot());
  change("tooltip", toolTipBefore, toolTipText());
}

void SimulatedStatusItemView::setAccessibilityValue(std::string_view value) {
  if (!exists()) return;
  const auto before = valueText();
  accessibilityValue_ = value;
  change("value", before, valueText());
}

void SimulatedStatusItemView::announce(std::string_view text) {
  context_.mac.timeline.add(TimelineEvent::Kind::voice, {quoted(text)});
}

void SimulatedStatusItemView::setHighlighted(bool highlighted) { isHighlighted_ = highlighted; }

void SimulatedStatusItemView::popUpMenu(const std::vector<MenuItem>& items) {
  wasHighlightedForMenu_ = isHighlighted_;
  if (!exists()) return;
  if (!menu_) context_.mainThread->beginTracking();
  menu_ = items;
}

std::string SimulatedStatusItemView::dot() const {
  if (isCapsLockIndicatorHidden_) return isScopeIndicatorHidden_ ? "none" : "override";
  return isScopeIndicatorHidden_ ? "caps-lock" : "both";
}

std::string SimulatedStatusItemView::toolTipText() const {
  return scopeToolTip_ ? quoted(*scopeToolTip_) : "none";
}

std::string SimulatedStatusItemView::valueText() const {
  return accessibilityValue_.empty() ? "none" : quoted(accessibilityValue_);
}

void SimulatedStatusItemView::click(ClickEvent event, bool isControlHeld) {
  context_.mainThread->deliver([this, event, isControlHeld] {
    if (exists()) actions().statusBarButtonClicked(event, isControlHeld);
  });
}

void SimulatedStatusItemView::showMenu() {
  context_.mainThread->deliver([this] {
    if (exists()) actions().showMenu();
  });
}

bool SimulatedStatusItemView::choose(std::string_view title) {
  if (!menu_) return false;
  const auto found = std::ranges::find_if(
      *menu_, [&](const MenuItem& item) { return item.title == title && item.isEnabled; });
  if (found == menu_->end()) return false;
  const auto action = found->action;
  const auto object = found->representedObject
                          ? std::optional<PropertyValue>{*found->representedObject}
                          : std::nullopt;
  // AppKit sends the action after the menu has closed.
  closeMenu();
  context_.mainThread->deliver([this, action, object] {
    switch (action) {
      case MenuAction::none:
        break;
      case MenuAction::handleMenuGlobalSwitch:
        actions().handleMenuGlobalSwitch(object);
        break;
      case MenuAction::handleMenuLocalSwitch:
        actions().handleMenuLocalSwitch(object);
        break;
      case MenuAction::openPreferences:
        actions().openPreferences();
        break;
      case MenuAction::quit:
        actions().quit();
        break;
    }
  });
  return true;
}

void SimulatedStatusItemView::closeMenu() {
  if (!menu_) return;
  menu_.reset();
  context_.mainThread->deliver([this] {
    actions().menuDidClose();
    context_.mainThread->endTracking();
  });
}

void SimulatedStatusItemView::change(std::string what, std::string before, std::string now) {
  context_.mac.timeline.addChange(TimelineEvent::Kind::status, {std::move(what)}, std::move(before),
                                  std::move(now));
}

}  // namespace keyrow::sim
