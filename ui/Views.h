#pragma once

namespace keyrow {

class AboutView;
class GeneralView;
class MainMenuView;
class SettingsWindowView;
class StatusItemView;

/// All views of one process.
struct Views {
  AboutView& about;
  GeneralView& general;
  MainMenuView& mainMenu;
  SettingsWindowView& settingsWindow;
  StatusItemView& statusItem;
};

}  // namespace keyrow
