#pragma once

namespace keyrow {

class SettingsWindowView;
class StatusItemView;

/// All views of one process.
struct Views {
  SettingsWindowView& settingsWindow;
  StatusItemView& statusItem;
};

}  // namespace keyrow
