#pragma once

namespace keyrow {

class AboutView;
class GeneralView;
class SettingsWindowView;
class StatusItemView;

/// All views of one process.
struct Views {
  AboutView& about;
  GeneralView& general;
  SettingsWindowView& settingsWindow;
  StatusItemView& statusItem;
};

}  // namespace keyrow
