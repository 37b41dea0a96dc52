#pragma once

#import <AppKit/AppKit.h>

#include "app/Keyrow.h"
#include "platform/macos/MacPlatform.h"
#include "platform/macos/MacViews.h"
#include "platform/macos/PreferencesTabViewController.h"
#include "platform/macos/tests/FakePorts.h"

namespace keyrow::macos {

/// Keyrow with a settings window that nobody sees. All but the fakes is as in the application.
class OffScreenKeyrow {
 public:
  /// On the user defaults of the suite with that name.
  explicit OffScreenKeyrow(std::string_view suiteName)
      : userDefaults_{makeUserDefaults(suiteName)} {}

  FakeAccessibility accessibility;
  FakeAlerts alerts;
  FakeApplication application;
  FakeFiles files;
  FakeInputMonitoring inputMonitoring;
  FakeLoginItem loginItem;
  FakeMailComposer mailComposer;
  FakeUpdateFramework updateFramework;
  FakeUserNotifications userNotifications;
  FakeWorkspace workspace;

  AppSettings& settings() { return keyrow_.settings(); }

  bool isSwitchedOn(Switch what) {
    if (const auto* setting = std::get_if<BooleanSetting>(&what)) return settings().isOn(*setting);
    return std::get<OtherSwitch>(what) == OtherSwitch::loginItem
               ? loginItem.enabled
               : updateFramework.checksAutomatically;
  }

  void createWindow() {
    keyrow_.settingsWindowController().createWindow();
    // Whoever clicks into it brings it to the front.
    window().alphaValue = 0;
    window().ignoresMouseEvents = YES;
    // What does not come into sight is not reported to have.
    keyrow_.settingsWindowController().viewDidAppear();
    layOut();
  }

  /// The size that the window has at all times.
  ContentSize contentSize() { return keyrow_.settingsWindowController().contentSize(); }

  /// Shows a tab, by its place; false when its pane is not in the window after a while.
  bool selectTab(NSInteger index);

  NSWindow* window() {
    return static_cast<MacSettingsWindowView&>(views_.views().settingsWindow).window();
  }
  PreferencesTabViewController* tabs() {
    return (PreferencesTabViewController*)window().contentViewController;
  }
  GeneralViewController* general() {
    return static_cast<MacGeneralView&>(views_.views().general).viewController();
  }
  AboutViewController* about() {
    return static_cast<MacAboutView&>(views_.views().about).viewController();
  }

 private:
  Platform platform();
  void layOut() {
    [window() layoutIfNeeded];
    [window().contentView layoutSubtreeIfNeeded];
  }

  const std::unique_ptr<UserDefaults> userDefaults_;
  MacPlatform mac_;
  MacViews views_;
  Keyrow keyrow_{platform(), views_.views()};
};

}  // namespace keyrow::macos
