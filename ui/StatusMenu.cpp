#include "ui/StatusMenu.h"

#include <array>
#include <string_view>

namespace keyrow {

namespace {

/// Shown as hints only: the shortcuts that work are the event tap's.
constexpr auto switchKeyEquivalent = "\t";

/// How one of the two switching items reads, by the mode that it sets.
struct SwitchTitles {
  std::string_view toSpecial;
  std::string_view toStandard;
};
constexpr SwitchTitles globalTitles{statusMenuTitle::globalToSpecial,
                                    statusMenuTitle::globalToStandard};
constexpr SwitchTitles localTitles{statusMenuTitle::localToSpecial,
                                   statusMenuTitle::localToStandard};

MenuItem separator() { return {.isSeparator = true}; }

MenuItem heading(std::string title) { return {.title = std::move(title), .isEnabled = false}; }

/// Without a base mode the item offers F1-F12, but cannot be chosen.
MenuItem switchItem(const SwitchTitles& titles, MenuAction action, MenuKeyModifier keyModifier,
                    std::optional<FnState> base) {
  const auto target = otherFnState(base.value_or(FnState::special));
  return {.title = std::string{target == FnState::special ? titles.toSpecial : titles.toStandard},
          .action = action,
          .keyEquivalent = switchKeyEquivalent,
          .keyModifier = keyModifier,
          .isEnabled = base.has_value(),
          .representedObject = rawValue(target)};
}

std::string shortcutText(const StatusMenuState& state) {
  std::string text = "Fn+" + state.shortcutKey;
  if (const auto modifier = state.fnReplacementModifier) {
    text += " or " + std::string{displayName(*modifier)} + "+" + state.shortcutKey;
  }
  return text;
}

}  // namespace

std::vector<MenuItem> makeStatusMenu(const StatusMenuState& state) {
  auto global = switchItem(globalTitles, MenuAction::handleMenuGlobalSwitch,
                           MenuKeyModifier::function, state.globalBase);
  global.toolTip = "Changes the global default used by apps without an override.";

  auto local = switchItem(localTitles, MenuAction::handleMenuLocalSwitch, MenuKeyModifier::shift,
                          state.localBase);
  global.isEnabled = global.isEnabled && !state.isGlobalManaged;
  local.isEnabled = local.isEnabled && state.hasFrontmostApplication && !state.isLocalManaged;
  local.toolTip = "Creates or toggles an app-specific override for the frontmost app. Shortcut: " +
                  shortcutText(state);

  return {heading("Global Default"),
          std::move(global),
          separator(),
          heading("Frontmost App Only"),
          std::move(local),
          separator(),
          {.title = std::string{statusMenuTitle::settings},
           .action = MenuAction::openPreferences,
           .keyEquivalent = ","},
          separator(),
          {.title = std::string{statusMenuTitle::quit},
           .action = MenuAction::quit,
           .keyEquivalent = "q"}};
}

}  // namespace keyrow
