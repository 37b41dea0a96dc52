#pragma once

#include <cstdint>
#include <optional>

#include "core/AppSettings.h"
#include "input/Permissions.h"
#include "input/ShortcutCapture.h"
#include "platform/Alerts.h"
#include "platform/Application.h"
#include "platform/EventMonitors.h"
#include "platform/NotificationCenter.h"
#include "platform/Workspace.h"
#include "ui/GeneralView.h"
#include "ui/SettingsWindowController.h"
#include "ui/Switches.h"

namespace keyrow {

/// The rules of the General pane: what its controls show, and what using them does. Main
/// thread only.
class GeneralPane final : public GeneralActions {
 public:
  struct Uses {
    GeneralView& view;
    AppSettings& settings;
    Switches& switches;
    Permissions& permissions;
    Alerts& alerts;
    Application& application;
    EventMonitors& eventMonitors;
    NotificationCenter& notificationCenter;
    SettingsWindowController& settingsWindowController;
    ShortcutCapture& shortcutCapture;
    Workspace& workspace;
  };

  explicit GeneralPane(const Uses& uses) : use_{uses} {}

  /// Shows the state of everything, and follows the permissions and what can be switched elsewhere
  /// from now on.
  void viewDidLoad() override;
  void viewWillAppear() override;

  /// How high its tallest state is, in points.
  double tallestHeight();

  void viewDidAppear() override;
  void viewWillDisappear() override { stopLocalShortcutCapture(); }
  void windowDidResignKey() override { stopLocalShortcutCapture(); }

  void toggle(Switch what, bool isOn) override;
  void changeFnReplacementModifier(const std::optional<PropertyValue>& representedObject) override;
  void toggleLocalShortcutCapture() override;
  void resetLocalShortcut() override;
  void openPermissions() override;
  void showAXPermissionHelp() override;
  void quitApp() override;

 private:
  void showSettings();
  void showSwitches();
  void syncFnReplacementModifier();
  void refreshShortcutTexts();
  void showHints(std::optional<FnReplacementModifier> modifier);
  void refreshPermission();
  void showPermission(MissingPermission missing);
  bool keyDown(const KeyDown& key);
  bool captureShortcut(const KeyDown& key);
  void stopLocalShortcutCapture();

  const Uses use_;
  ObserverToken activationObserver_;
  ObserverToken settingsObserver_;
  ObserverToken permissionObserver_;
  /// Present while capturing, and until the next press after that of the key that was recorded.
  Registration keyDownMonitor_;
  std::uint16_t recordedKeyCode_ = 0;
};

}  // namespace keyrow
