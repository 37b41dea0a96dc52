#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "ui/View.h"

namespace keyrow {

/// What choosing an item of the main menu does. The first three are Keyrow's own; the others are
/// what every application has, and go to whatever has the focus (`NSApp sendAction:to:from:`).
enum class MainMenuAction {
  showAbout,
  showSettings,
  showAcknowledgements,
  hide,
  hideOtherApplications,
  unhideAllApplications,
  terminate,
  undo,
  redo,
  cut,
  copy,
  paste,
  remove,
  selectAll,
  performClose,
  performMiniaturize,
  performZoom,
  arrangeInFront,
};

struct MainMenuItem {
  /// Empty for a separator.
  std::string_view title = {};
  MainMenuAction action = {};
  /// Goes with Command; a capital letter with Shift, too. Empty for none.
  std::string_view key = {};
  /// Whether the key goes with Option, too.
  bool hasOption = false;

  constexpr bool isSeparator() const { return title.empty(); }
};

/// A menu of the menu bar.
struct MainMenu {
  std::string_view title;
  std::span<const MainMenuItem> items;
};

/// All of them, from the left. Nobody sees them, because an application without a Dock icon has
/// no menu bar, but their keys work, and assistive technology finds them.
std::span<const MainMenu> mainMenus();

/// The application's menu has no title of its own, and the system lists windows in another.
inline constexpr std::size_t applicationMenuIndex = 0;
inline constexpr std::size_t windowMenuIndex = 2;

/// What the user chooses in the main menu, and AppKit does not do by itself.
class MainMenuActions {
 public:
  virtual void showAbout() = 0;
  virtual void showSettings() = 0;
  virtual void showAcknowledgements() = 0;

 protected:
  ~MainMenuActions() = default;
};

/// The main menu (`NSApp.mainMenu`): key equivalents are looked up there and nowhere else.
class MainMenuView : public View<MainMenuActions> {
 public:
  /// Makes `mainMenus` the main menu.
  virtual void create() = 0;
};

}  // namespace keyrow
