#include "sim/ports/SimulatedMainMenuView.h"

#include <algorithm>
#include <cctype>
#include <cstdint>

#include "platform/KeyEvent.h"

namespace keyrow::sim {

namespace {

std::string lowercase(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](unsigned char one) { return static_cast<char>(std::tolower(one)); });
  return text;
}

bool isKeyOf(const MainMenuItem& item, const KeyDown& key) {
  constexpr auto modifiers =
      keyEventFlag::shift | keyEventFlag::control | keyEventFlag::option | keyEventFlag::command;
  if (item.key.empty() || !key.characters) return false;
  const auto letter = lowercase(std::string{item.key});
  auto expected = keyEventFlag::command;
  if (item.hasOption) expected |= keyEventFlag::option;
  if (letter != item.key) expected |= keyEventFlag::shift;
  return (key.flags & modifiers) == expected && lowercase(*key.characters) == letter;
}

}  // namespace

void SimulatedMainMenuView::create() {
  context_.mac.trace.add("create main menu");
  exists_ = true;
}

std::vector<std::string> SimulatedMainMenuView::enabledTitles() const {
  std::vector<std::string> titles;
  find([&](const MainMenuItem& item) {
    titles.emplace_back(item.title);
    return false;
  });
  return titles;
}

bool SimulatedMainMenuView::choose(std::string_view title) {
  const auto* item = find([title](const auto& one) { return one.title == title; });
  if (item) perform(item->action);
  return item != nullptr;
}

bool SimulatedMainMenuView::performKeyEquivalent(const KeyDown& key) {
  const auto* item = find([&key](const auto& one) { return isKeyOf(one, key); });
  if (item) perform(item->action);
  return item != nullptr;
}

const MainMenuItem* SimulatedMainMenuView::find(
    const std::function<bool(const MainMenuItem&)>& isMeant) const {
  if (!exists_) return nullptr;
  for (const auto& menu : mainMenus()) {
    for (const auto& item : menu.items) {
      if (!item.isSeparator() && isEnabled(item) && isMeant(item)) return &item;
    }
  }
  return nullptr;
}

bool SimulatedMainMenuView::isEnabled(const MainMenuItem& item) const {
  using enum MainMenuAction;
  switch (item.action) {
    case showAbout:
    case showSettings:
    case showAcknowledgements:
    case hide:
    case hideOtherApplications:
    case unhideAllApplications:
    case terminate:
    case arrangeInFront:
      return true;
    case performClose:
    case performMiniaturize:
      return settingsWindow_.isKey();
    case undo:
    case redo:
    case cut:
    case copy:
    case paste:
    case remove:
    case selectAll:
    case performZoom:
      // No text has the focus, and the window has one size.
      break;
  }
  return false;
}

void SimulatedMainMenuView::perform(MainMenuAction action) {
  context_.mainThread->deliver([this, action] {
    using enum MainMenuAction;
    switch (action) {
      case showAbout:
        return actions().showAbout();
      case showSettings:
        return actions().showSettings();
      case showAcknowledgements:
        return actions().showAcknowledgements();
      case terminate:
        return application_.terminate();
      case hide:
        return application_.hide();
      case performClose:
        return settingsWindow_.close();
      case performMiniaturize:
        return settingsWindow_.miniaturize();
      default:
        // What AppKit does then, Keyrow does not notice.
        break;
    }
  });
}

}  // namespace keyrow::sim
