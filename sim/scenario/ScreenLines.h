#pragma once

#include <string>

#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// The user clicks Keyrow's item in the menu bar.
struct ClickItem {
  ClickEvent event;
  bool isControlHeld = false;
  Outcome play(Stage& stage) const;
};

/// The user presses Keyrow's item with VoiceOver, or performs its action "Show Menu".
struct UseVoiceOver {
  bool showsMenu;
  Outcome play(Stage& stage) const;
};

/// The user clicks a control of the settings window.
struct ClickControl {
  std::string title;
  /// Not with the mouse, which would bring the window to the front.
  bool isByVoiceOver = false;
  Outcome play(Stage& stage) const;
};

/// The user chooses from the open menu, or from the pop-up of the settings window.
struct Choose {
  std::string title;
  Outcome play(Stage& stage) const;
};

/// The user chooses from Keyrow's main menu.
struct ChooseFromMainMenu {
  std::string title;
  Outcome play(Stage& stage) const;
};

/// The user closes the menu.
struct CloseMenu {
  Outcome play(Stage& stage) const;
};

/// The user closes the settings window.
struct CloseWindow {
  Outcome play(Stage& stage) const;
};

/// The user selects a tab of the settings window.
struct SelectTab {
  std::string title;
  Outcome play(Stage& stage) const;
};

/// The user presses a button of the alert that is open.
struct Answer {
  std::string button;
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
