#include "sim/scenario/Drawing.h"

#include <algorithm>

#include "sim/PropertyText.h"
#include "sim/SimulatedText.h"

namespace keyrow::sim {

namespace {

std::string keyText(const MenuItem& item) {
  if (item.keyEquivalent.empty()) return {};
  const std::string key = item.keyEquivalent == "\t" ? "⇥" : item.keyEquivalent;
  switch (item.keyModifier) {
    case MenuKeyModifier::function:
      return "fn " + key;
    case MenuKeyModifier::shift:
      return "⇧" + key;
    case MenuKeyModifier::command:
      break;
  }
  return "⌘" + key;
}

bool isHeading(const MenuItem& item) {
  return !item.isSeparator && item.action == MenuAction::none;
}

}  // namespace

std::string drawStatusItem(const SimulatedStatusItemView& item) {
  if (!item.exists()) return "none";
  std::string text = item.image() == "none" ? "[ ]" : "[" + item.image() + "]";
  if (!item.isCapsLockIndicatorHidden()) text += " green dot, Caps Lock";
  if (!item.isScopeIndicatorHidden()) {
    text += " blue dot, " + quoted(item.scopeToolTip().value_or(""));
  }
  return text;
}

std::string drawMenu(const std::vector<MenuItem>& items) {
  constexpr std::size_t indentation = 2;
  std::size_t width = 0;
  SimulatedText text;
  for (const auto& item : items) width = std::max(width, text.characterCount(item.title));

  std::string drawing;
  for (const auto& item : items) {
    if (item.isSeparator) {
      for (std::size_t column = 0; column < width + indentation; ++column) drawing += "─";
      drawing += '\n';
      continue;
    }
    if (!isHeading(item)) drawing += std::string(indentation, ' ');
    drawing += item.title;
    if (const auto key = keyText(item); !key.empty()) {
      drawing += std::string(width + 2 - text.characterCount(item.title), ' ') + key;
    }
    if (!item.isEnabled && !isHeading(item)) drawing += "  (disabled)";
    drawing += '\n';
    if (!item.toolTip.empty()) {
      drawing += std::string(2 * indentation, ' ') + item.toolTip + '\n';
    }
  }
  return drawing;
}

}  // namespace keyrow::sim
