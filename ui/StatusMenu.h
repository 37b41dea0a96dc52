#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/FnReplacementModifier.h"
#include "core/FnState.h"

namespace keyrow {

/// The titles of the items that can be chosen.
namespace statusMenuTitle {
inline constexpr std::string_view globalToSpecial = "Use Media & System Controls by Default";
inline constexpr std::string_view globalToStandard = "Use F1-F12 by Default";
inline constexpr std::string_view localToSpecial = "Use Media & System Controls in This App Only";
inline constexpr std::string_view localToStandard = "Use F1-F12 in This App Only";
inline constexpr std::string_view settings = "Settings…";
inline constexpr std::string_view quit = "Quit";
}  // namespace statusMenuTitle

/// What choosing a menu item does.
enum class MenuAction {
  none,
  handleMenuGlobalSwitch,
  handleMenuLocalSwitch,
  openPreferences,
  quit
};

/// The modifier of a key equivalent (`NSEventModifierFlags`).
enum class MenuKeyModifier { command, function, shift };

/// An item of the status item's menu.
struct MenuItem {
  std::string title = {};
  MenuAction action = MenuAction::none;
  std::string keyEquivalent = {};
  MenuKeyModifier keyModifier = MenuKeyModifier::command;
  bool isEnabled = true;
  std::string toolTip = {};
  /// The raw value of the `FnState` that the item sets.
  std::optional<std::int64_t> representedObject = {};
  bool isSeparator = false;
};

/// What the menu tells the user about.
struct StatusMenuState {
  /// The mode that the global item departs from; absent when there is none.
  std::optional<FnState> globalBase;
  /// The mode that the local item departs from; absent when there is none.
  std::optional<FnState> localBase;
  /// Whether there is an application that can have an override.
  bool hasFrontmostApplication = false;
  /// Whether an administrator manages the modes, so that they cannot be changed.
  bool isGlobalManaged = false;
  bool isLocalManaged = false;
  /// How the key of the per-app shortcut is shown.
  std::string shortcutKey;
  std::optional<FnReplacementModifier> fnReplacementModifier;
};

/// The items of the menu, from the top.
std::vector<MenuItem> makeStatusMenu(const StatusMenuState& state);

}  // namespace keyrow
