#pragma once

#include "platform/Bundle.h"
#include "platform/Workspace.h"
#include "ui/MainMenu.h"
#include "ui/SettingsWindowController.h"

namespace keyrow {

/// The main menu, and what its own items do. Main thread only.
class MainMenuController final : public MainMenuActions {
 public:
  struct Uses {
    MainMenuView& view;
    SettingsWindowController& settingsWindowController;
    Bundle& bundle;
    Workspace& workspace;
  };

  explicit MainMenuController(const Uses& uses) : use_{uses} {}

  void setUp() { use_.view.create(); }

  void showAbout() override { use_.settingsWindowController.showAbout(); }
  void showSettings() override { use_.settingsWindowController.show(); }
  /// Opens the licences of what Keyrow is made with; does nothing when they are not in the bundle.
  void showAcknowledgements() override;

 private:
  const Uses use_;
};

}  // namespace keyrow
