#import <QuartzCore/QuartzCore.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/Application.h"
#include "platform/macos/MacPorts.h"
#include "platform/macos/tests/LayoutFaults.h"
#include "platform/macos/tests/PaneImage.h"
#include "platform/macos/tests/SettingsWindowFixture.h"
#include "ui/GeneralLayout.h"

namespace keyrow::macos {
namespace {

namespace layout = generalLayout;

class GeneralPaneTest : public SettingsWindowFixture {
 protected:
  GeneralViewController* pane() { return keyrow.general(); }

  void choose(NSInteger index) {
    NSPopUpButton* const popup = pane().fnReplacementModifierPopup;
    [popup selectItemAtIndex:index];
    [popup sendAction:popup.action to:popup.target];
  }

  bool isIndicator(NSColor* color) {
    __block bool isEqual = false;
    KeyrowDotView* const dot = pane().axPermissionIndicatorView;
    [dot.effectiveAppearance performAsCurrentDrawingAppearance:^{
      isEqual = CGColorEqualToColor(dot.layer.backgroundColor, color.CGColor);
    }];
    return isEqual;
  }
};

TEST_F(GeneralPaneTest, ShowsEveryControl) {
  keyrow.createWindow();
  for (NSView* view in @[
         pane().axPermissionStack, pane().axPermissionButton, pane().axPermissionIndicatorView,
         pane().axPermissionHelpButton, pane().localShortcutLabel, pane().localShortcutButton,
         pane().resetLocalShortcutButton, pane().localShortcutHintLabel,
         pane().fnReplacementModifierLabel, pane().fnReplacementModifierPopup,
         pane().fnReplacementModifierHintLabel, pane().quitButton
       ]) {
    expectShown(view, pane().view);
  }
  expectRows(pane(), layout::rows);
}

TEST_F(GeneralPaneTest, HasItsTexts) {
  keyrow.createWindow();
  EXPECT_EQ(titleOf(pane().axPermissionButton), layout::permissionButtonTitle);
  EXPECT_EQ(pane().axPermissionHelpButton.bezelStyle, NSBezelStyleHelpButton);
  EXPECT_EQ(textOf(pane().localShortcutLabel), layout::localShortcutTitle);
  EXPECT_EQ(titleOf(pane().localShortcutButton), "Fn + `");
  EXPECT_EQ(titleOf(pane().resetLocalShortcutButton), layout::resetTitle);
  EXPECT_FALSE(pane().resetLocalShortcutButton.enabled);
  EXPECT_EQ(textOf(pane().localShortcutHintLabel),
            "Use Fn plus this key to create or toggle an app-specific Fn override for the "
            "frontmost app with a different Fn mode from the global setting.");
  EXPECT_EQ(textOf(pane().fnReplacementModifierLabel), layout::fnReplacementTitle);
  EXPECT_EQ(textOf(pane().fnReplacementModifierHintLabel),
            "Optional. Choose a modifier key to mirror Fn for Esc and the local app shortcut.");
  EXPECT_EQ(titleOf(pane().quitButton), layout::quitTitle);
}

TEST_F(GeneralPaneTest, HasEveryModifierInThePopUp) {
  keyrow.createWindow();
  NSPopUpButton* const popup = pane().fnReplacementModifierPopup;
  const auto items = fnReplacementItems();
  ASSERT_EQ(popup.itemArray.count, items.size());
  for (std::size_t index = 0; index < items.size(); ++index) {
    NSMenuItem* const item = popup.itemArray[index];
    EXPECT_EQ(item.separatorItem, items[index].isSeparator) << index;
    if (!items[index].isSeparator) EXPECT_EQ(utf8Text(item.title), items[index].title);
  }
  EXPECT_EQ(popup.indexOfSelectedItem, 0);
}

TEST_F(GeneralPaneTest, ShowsWhatIsSet) {
  keyrow.accessibility.isTrusted = true;
  keyrow.loginItem.enabled = true;
  for (const auto& row : booleanSettingTable) keyrow.settings().set(row.setting, true);
  keyrow.settings().setFnReplacementModifier(FnReplacementModifier::leftShift);
  keyrow.settings().setLocalToggleShortcut({96, "F5", ""});
  keyrow.createWindow();
  for (const auto& checkbox : checkboxesOf(layout::rows)) {
    EXPECT_TRUE(isOn([pane() checkboxOf:checkbox.what])) << checkbox.title;
  }
  EXPECT_EQ(titleOf(pane().localShortcutButton), "Fn + F5");
  EXPECT_TRUE(pane().resetLocalShortcutButton.enabled);
  EXPECT_EQ(utf8Text(pane().fnReplacementModifierPopup.titleOfSelectedItem), "Left Shift");
  EXPECT_EQ(textOf(pane().fnReplacementModifierHintLabel),
            "Use Left Shift with Esc for the global shortcut, or with the local app shortcut "
            "above.");
  EXPECT_TRUE(isIndicator(NSColor.systemGreenColor));
}

TEST_F(GeneralPaneTest, FollowsThePermissionWheneverItIsActivated) {
  keyrow.createWindow();
  EXPECT_TRUE(isIndicator(NSColor.systemRedColor));
  EXPECT_EQ(utf8Text(pane().axPermissionIndicatorView.toolTip),
            "Accessibility permission not granted. Input Monitoring may also be required.");
  keyrow.accessibility.isTrusted = true;
  makeNotificationCenter()->post(applicationDidBecomeActive);
  EXPECT_TRUE(isIndicator(NSColor.systemGreenColor));
  EXPECT_EQ(utf8Text(pane().axPermissionIndicatorView.toolTip),
            "Accessibility permission granted. Input Monitoring is managed separately.");
  keyrow.inputMonitoring.answer = InputMonitoringAccess::denied;
  makeNotificationCenter()->post(applicationDidBecomeActive);
  EXPECT_TRUE(isIndicator(NSColor.systemRedColor));
  EXPECT_EQ(utf8Text(pane().axPermissionIndicatorView.toolTip),
            "Input Monitoring permission not granted.");
  EXPECT_EQ(titleOf(pane().axPermissionButton), layout::inputMonitoringButtonTitle);
  [pane().axPermissionButton performClick:nil];
  EXPECT_TRUE(keyrow.workspace.openedURLs.back().ends_with("Privacy_ListenEvent"));
}

TEST_F(GeneralPaneTest, EveryCheckboxSetsItsOwnSwitch) {
  keyrow.createWindow();
  expectToggles(pane(), layout::rows);
}

TEST_F(GeneralPaneTest, EveryItemOfThePopUpSetsItself) {
  keyrow.createWindow();
  const auto items = fnReplacementItems();
  for (std::size_t index = 0; index < items.size(); ++index) {
    if (items[index].isSeparator) continue;
    choose(static_cast<NSInteger>(index));
    EXPECT_EQ(keyrow.settings().fnReplacementModifier(),
              fnReplacementModifierFromRawValue(items[index].representedObject));
    EXPECT_EQ(pane().fnReplacementModifierPopup.indexOfSelectedItem, static_cast<NSInteger>(index));
  }
}

TEST_F(GeneralPaneTest, TheShortcutIsRecordedAndReset) {
  keyrow.settings().setLocalToggleShortcut({96, "F5", ""});
  keyrow.createWindow();
  [pane().localShortcutButton performClick:nil];
  EXPECT_EQ(titleOf(pane().localShortcutButton), "Press any key...");
  [pane().localShortcutButton performClick:nil];
  EXPECT_EQ(titleOf(pane().localShortcutButton), "Fn + F5");
  [pane().resetLocalShortcutButton performClick:nil];
  EXPECT_EQ(titleOf(pane().localShortcutButton), "Fn + `");
  EXPECT_EQ(keyrow.settings().localToggleShortcut(), defaultLocalToggleShortcut());
  EXPECT_FALSE(pane().resetLocalShortcutButton.enabled);
}

TEST_F(GeneralPaneTest, ACaptureEndsWhenItsWindowGetsNoKeysAnyMore) {
  keyrow.createWindow();
  [pane() viewDidAppear];
  [pane().localShortcutButton performClick:nil];
  EXPECT_EQ(titleOf(pane().localShortcutButton), "Press any key...");
  [NSNotificationCenter.defaultCenter postNotificationName:NSWindowDidResignKeyNotification
                                                    object:keyrow.window()];
  EXPECT_EQ(titleOf(pane().localShortcutButton), "Fn + `");
  [pane().localShortcutButton performClick:nil];
  [pane() viewWillDisappear];
  EXPECT_EQ(titleOf(pane().localShortcutButton), "Fn + `");
}

TEST_F(GeneralPaneTest, HasRoomForEveryTextThatItShows) {
  keyrow.createWindow();
  const auto items = fnReplacementItems();
  double tallest = leastSettingsContentSize.height;
  for (std::size_t index = 0; index < items.size(); ++index) {
    if (items[index].isSeparator) continue;
    choose(static_cast<NSInteger>(index));
    tallest = std::max<double>(tallest, pane().view.fittingSize.height);
    for (const auto* state : {"", ", capturing"}) {
      [pane().view layoutSubtreeIfNeeded];
      const auto name = "settings-general, " + std::string{items[index].title} + state;
      EXPECT_EQ(layoutFaults(pane().view), "") << name;
      EXPECT_TRUE(writeImage(pane().view, name));
      [pane().localShortcutButton performClick:nil];
    }
  }
  EXPECT_EQ(keyrow.contentSize().height, std::ceil(tallest));
}

TEST_F(GeneralPaneTest, ATitleThatIsCutIsToldWhole) {
  keyrow.createWindow();
  NSButton* const button = pane().localShortcutButton;
  for (const auto* key : {"F5", "Page Up", "Left Arrow", "Forward Delete"}) {
    keyrow.settings().setLocalToggleShortcut({117, key, std::nullopt});
    for (int time = 0; time < 2; ++time) {
      [button performClick:nil];
      [pane().view layoutSubtreeIfNeeded];
      const bool isCut = [button alignmentRectForFrame:button.frame].size.width <
                         button.intrinsicContentSize.width - 0.5;
      EXPECT_EQ(utf8Text(button.toolTip), isCut ? titleOf(button) : "");
      EXPECT_EQ(utf8Text(button.accessibilityLabel),
                isCut ? titleOf(button) : std::string{layout::localShortcutTitle});
    }
  }
}

TEST_F(GeneralPaneTest, TheDotFollowsTheAppearance) {
  keyrow.createWindow();
  KeyrowDotView* const dot = pane().axPermissionIndicatorView;
  for (NSAppearanceName name in @[ NSAppearanceNameDarkAqua, NSAppearanceNameAqua ]) {
    pane().view.appearance = [NSAppearance appearanceNamed:name];
    EXPECT_TRUE(isIndicator(NSColor.systemRedColor)) << utf8Text(name);
    EXPECT_EQ(dot.effectiveAppearance, pane().view.effectiveAppearance);
  }
}

TEST_F(GeneralPaneTest, TheOtherButtonsDoWhatTheySay) {
  keyrow.createWindow();
  [pane().axPermissionButton performClick:nil];
  ASSERT_EQ(keyrow.workspace.openedURLs.size(), 1U);
  EXPECT_TRUE(keyrow.workspace.openedURLs[0].starts_with("x-apple.systempreferences:"));
  [pane().quitButton performClick:nil];
  EXPECT_EQ(keyrow.application.terminations, 1);
}

TEST_F(GeneralPaneTest, ThePopoverExplainsThePermissions) {
  keyrow.createWindow();
  NSPopover* const popover = pane().axPermissionPopover;
  EXPECT_EQ(popover.behavior, NSPopoverBehaviorTransient);
  NSTextField* const label = popover.contentViewController.view.subviews.firstObject;
  ASSERT_TRUE([label isKindOfClass:NSTextField.class]);
  EXPECT_EQ(textOf(label), layout::popoverText);
  NSView* const content = popover.contentViewController.view;
  EXPECT_EQ(content.frame.size.width, layout::popoverWidth);
  EXPECT_EQ(content.frame.size.height, content.fittingSize.height);
  EXPECT_TRUE(NSEqualSizes(popover.contentViewController.preferredContentSize, content.frame.size));
  EXPECT_EQ(layoutFaults(content), "");
}

}  // namespace
}  // namespace keyrow::macos
