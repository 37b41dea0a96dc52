#include "sim/scenario/Drawing.h"

#include <algorithm>

#include "sim/machine/PropertyText.h"
#include "sim/ports/SimulatedText.h"
#include "sim/scenario/PaneState.h"
#include "ui/AboutLayout.h"
#include "ui/GeneralLayout.h"

namespace keyrow::sim {

namespace {

bool isHeading(const MenuItem& item) {
  return !item.isSeparator && item.action == MenuAction::none;
}

}  // namespace

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

namespace {

std::string checkbox(bool isChecked, std::string_view title) {
  return (isChecked ? "  [x] " : "  [ ] ") + std::string{title} + '\n';
}

std::string button(std::string_view title) { return "[ " + std::string{title} + " ]"; }

std::string hint(std::string_view text) { return "      " + std::string{text} + '\n'; }

std::string draw(const SimulatedGeneralView& general, generalLayout::Control control) {
  namespace layout = generalLayout;
  using enum layout::Control;
  const auto& items = general.fnReplacementItems;
  const auto selected = general.selectedFnReplacementItem;
  const bool isGreen = general.permissionColor == PermissionColor::green;
  switch (control) {
    case permissionStack:
      return "  " + button(general.permissionButtonTitle) + (isGreen ? " green" : " red") +
             " dot " + button(layout::permissionHelpTitle) + '\n' +
             hint(general.permissionToolTip) +
             (general.isPopoverShown ? hint(layout::popoverText) : std::string{});
    case localShortcut:
      return "  " + std::string{layout::localShortcutTitle} + "  " +
             button(general.localShortcutTitle) + ' ' + button(layout::resetTitle) +
             (general.isResetEnabled ? "" : " (disabled)") + '\n';
    case localShortcutHint:
      return hint(general.localShortcutHint);
    case fnReplacement:
      return "  " + std::string{layout::fnReplacementTitle} + "  < " +
             std::string{selected < items.size() ? items[selected].title : ""} + " >\n";
    case fnReplacementHint:
      return hint(general.fnReplacementHint);
  }
  return {};
}

std::string draw(const SimulatedAboutView& about, aboutLayout::Control control) {
  namespace layout = aboutLayout;
  using enum layout::Control;
  switch (control) {
    case appIcon:
      return {};
    case description:
      return "  " + std::string{layout::descriptionText} + '\n';
    case version:
      return "  " + about.version + '\n';
    case contactActions:
      return "  " + button(layout::contactTitle) + ' ' + button(layout::reportBugTitle) + '\n';
    case checkUpdates:
      return "  " + button(layout::checkUpdatesTitle) + '\n';
  }
  return {};
}

std::string drawRows(const auto& pane, const auto& rows) {
  std::string drawing;
  for (const auto& row : rows) {
    if (const auto* box = std::get_if<Checkbox>(&row.what)) {
      drawing += checkbox(pane.isChecked(box->what), box->title);
    } else if (const auto* text = std::get_if<Hint>(&row.what)) {
      drawing += hint(text->text);
    } else {
      drawing += draw(pane, std::get<0>(row.what));
    }
  }
  return drawing;
}

}  // namespace

std::string drawSettings(SimulatedPlatform& platform) {
  const bool isGeneral = isGeneralSelected(platform);
  if (!isGeneral) return drawRows(platform.about, aboutLayout::rows);
  return drawRows(platform.general, generalLayout::rows) + "  " + button(generalLayout::quitTitle) +
         '\n';
}

}  // namespace keyrow::sim
