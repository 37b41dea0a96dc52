#pragma once

#include <optional>
#include <string>

#include "core/AppSettings.h"
#include "core/ModePolicy.h"
#include "input/CapsLockMonitor.h"
#include "platform/Application.h"
#include "platform/MainQueue.h"
#include "platform/MainRunLoop.h"
#include "platform/Workspace.h"
#include "ui/SettingsWindowController.h"
#include "ui/StatusItemView.h"

namespace keyrow {

/// The item in the menu bar: shows the mode in force, whether it is an override, and the
/// Caps Lock state; switches the mode on a click, and offers a menu. Main thread only.
class StatusBarController final : public ModePresenter,
                                  public CapsLockPresenter,
                                  public StatusItemActions {
 public:
  struct Uses {
    StatusItemView& view;
    ModePolicy& modePolicy;
    const AppSettings& settings;
    CapsLockMonitor& capsLockMonitor;
    SettingsWindowController& settingsWindowController;
    Workspace& workspace;
    Application& application;
    MainQueue& mainQueue;
    MainRunLoop& mainRunLoop;
  };

  explicit StatusBarController(const Uses& uses) : use_{uses} {}

  /// Puts the item into the menu bar and shows the hardware's mode there.
  void setUp();

  /// Does what a left click does.
  void fnSwitch();

  /// Creates or flips the frontmost application's override. No control calls it, only tests
  /// do.
  void toggleLocal();

  /// Shows the Caps Lock state afresh, or hides it.
  void setCapsLockIndicatorEnabled(bool enabled) override;

  /// Brings the Caps Lock indicator up to date; leaves it when the state cannot be read.
  void updateCapsLockIndicator() override;

  void fnStateDidChange(FnState state) override;
  void scopeDidChange(bool isLocalScopeActive) override;
  void commandWorked() override;

  void statusBarButtonClicked(ClickEvent event, bool isControlHeld) override;
  void showMenu() override;
  void handleMenuGlobalSwitch(const std::optional<PropertyValue>& representedObject) override;
  void handleMenuLocalSwitch(const std::optional<PropertyValue>& representedObject) override;
  void openPreferences() override;
  void quit() override;
  void menuDidClose() override;

 private:
  void updateStatusImage(FnState state);
  void updateScopeIndicator();
  void updateAccessibilityValue();
  void hideCapsLockIndicator();
  void popUpMenu();
  void afterMenu();

  const Uses use_;

  /// The Caps Lock state last shown; absent when the next one is to be shown in any case.
  std::optional<bool> lastCapsLockLockedState_;
  bool isCapsLockIndicatorVisible_ = false;
  /// It was asked for and is going to open, or it is open.
  bool isMenuComing_ = false;
  bool isMenuOpen_ = false;
  /// What assistive technology was told last.
  std::string accessibilityValue_;
  /// Set by the menu: the window would lose the focus to a menu that is still closing.
  bool shouldOpenSettingsAfterMenuClose_ = false;
};

}  // namespace keyrow
