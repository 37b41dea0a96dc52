#include "ui/StatusBarController.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

#include "tests/app/AppDelegateFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

class StatusBarControllerTest : public AppDelegateFixture {
 protected:
  void SetUp() override {
    AppDelegateFixture::SetUp();
    launchWithFrontmost(textEdit);
    mac.scheduler.runReady();
  }

  SimulatedStatusItemView& item() { return process->statusItem(); }
  StatusBarController& controller() { return keyrow().statusBarController(); }

  void showCapsLock(bool isOn) {
    mac.isCapsLockOn = isOn;
    keyrow().settings().set(BooleanSetting::showCapsLockIndicator, true);
  }
};

TEST_F(StatusBarControllerTest, TheImageFollowsTheMode) {
  EXPECT_EQ(item().image(), "globe");
  keyrow().modePolicy().setGlobalFnState(FnState::standard, nullptr);
  EXPECT_EQ(item().image(), "fn");
}

TEST_F(StatusBarControllerTest, TheOverrideDotAndItsToolTipComeAndGo) {
  EXPECT_EQ(item().dot(), "none");
  EXPECT_EQ(item().scopeToolTip(), std::nullopt);
  controller().toggleLocal();
  EXPECT_EQ(item().dot(), "override");
  EXPECT_EQ(item().scopeToolTip(), "Local F-Key Mode");
  keyrow().modePolicy().clearLocalOverride(nullptr);
  EXPECT_EQ(item().dot(), "none");
  EXPECT_EQ(item().scopeToolTip(), std::nullopt);
}

TEST_F(StatusBarControllerTest, CapsLockWinsTheSharedPlaceAndGivesItBack) {
  controller().toggleLocal();
  showCapsLock(true);
  EXPECT_EQ(item().dot(), "caps-lock");
  EXPECT_EQ(item().scopeToolTip(), "Local F-Key Mode");
  mac.isCapsLockOn = false;
  controller().updateCapsLockIndicator();
  EXPECT_EQ(item().dot(), "override");
}

TEST_F(StatusBarControllerTest, ANewOverrideStaysBehindCapsLock) {
  showCapsLock(true);
  controller().toggleLocal();
  EXPECT_EQ(item().dot(), "caps-lock");
}

TEST_F(StatusBarControllerTest, SwitchingTheIndicatorOffBringsTheOverrideBack) {
  controller().toggleLocal();
  showCapsLock(true);
  keyrow().settings().set(BooleanSetting::showCapsLockIndicator, false);
  EXPECT_EQ(item().dot(), "override");
  showCapsLock(true);
  EXPECT_EQ(item().dot(), "caps-lock");
}

TEST_F(StatusBarControllerTest, WithoutTheSettingCapsLockIsNotAskedFor) {
  mac.isCapsLockOn = true;
  mac.trace.start();
  controller().updateCapsLockIndicator();
  EXPECT_THAT(mac.trace.take(), ElementsAre());
  EXPECT_EQ(item().dot(), "none");
}

TEST_F(StatusBarControllerTest, ASettingThatWentOffBehindItsBackHidesTheDotWithTheNextMode) {
  controller().toggleLocal();
  showCapsLock(true);
  store("showCapsLockIndicator", false);
  item().click(ClickEvent::leftMouseUp);
  EXPECT_EQ(item().dot(), "override");
}

TEST_F(StatusBarControllerTest, ANewModeBringsCapsLockUpToDate) {
  showCapsLock(false);
  mac.isCapsLockOn = true;
  item().click(ClickEvent::leftMouseUp);
  EXPECT_EQ(item().dot(), "caps-lock");
}

TEST_F(StatusBarControllerTest, AStateThatIsShownAlreadyIsNotShownAgain) {
  showCapsLock(true);
  // Something else hides it: only a new state, or switching it on anew, brings it back.
  item().setCapsLockIndicatorHidden(true);
  controller().updateCapsLockIndicator();
  EXPECT_TRUE(item().isCapsLockIndicatorHidden());
  controller().setCapsLockIndicatorEnabled(true);
  EXPECT_FALSE(item().isCapsLockIndicatorHidden());
}

TEST_F(StatusBarControllerTest, AnUnreadableCapsLockChangesNothingAndLeaksNothing) {
  showCapsLock(true);
  mac.isCapsLockOn = false;
  for (const auto call :
       {PortCall::findService, PortCall::openConnection, PortCall::readModifierLockState}) {
    mac.faults.fail(call, 1);
    controller().updateCapsLockIndicator();
    EXPECT_EQ(item().dot(), "caps-lock") << info(call).name;
    EXPECT_EQ(mac.openHandles.count("HidService") + mac.openHandles.count("HidConnection"), 0);
  }
  controller().updateCapsLockIndicator();
  EXPECT_EQ(item().dot(), "none");
}

TEST_F(StatusBarControllerTest, ALeftClickFlipsWhatIsInForce) {
  item().click(ClickEvent::leftMouseUp);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  EXPECT_EQ(stored("localFnState"), std::nullopt);
  controller().toggleLocal();
  item().click(ClickEvent::leftMouseUp);
  EXPECT_EQ(stored("globalFnState"), PropertyValue{1});
  EXPECT_EQ(stored("localFnState"), (PropertyDictionary{{textEdit, 1}}));
  controller().fnSwitch();
  EXPECT_EQ(stored("localFnState"), (PropertyDictionary{{textEdit, 0}}));
}

TEST_F(StatusBarControllerTest, EveryOtherActivationCountsAsALeftClick) {
  takeWrittenModes();
  item().click(ClickEvent::none);
  // The keys that press it for VoiceOver are held with Control.
  item().click(ClickEvent::other, /*isControlHeld=*/true);
  item().click(ClickEvent::other);
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1, 0, 1));
  EXPECT_EQ(item().menu(), nullptr);
}

TEST_F(StatusBarControllerTest, AControlClickAndTheActionOpenTheMenu) {
  takeWrittenModes();
  item().click(ClickEvent::leftMouseUp, /*isControlHeld=*/true);
  EXPECT_NE(item().menu(), nullptr);
  item().closeMenu();
  item().showMenu();
  mac.scheduler.runReady();
  EXPECT_NE(item().menu(), nullptr);
  EXPECT_THAT(takeWrittenModes(), ElementsAre());
}

TEST_F(StatusBarControllerTest, HoweverOftenTheMenuIsAskedForItOpensOnce) {
  item().showMenu();
  item().showMenu();
  EXPECT_EQ(item().menu(), nullptr);
  mac.scheduler.runReady();
  EXPECT_NE(item().menu(), nullptr);
  item().showMenu();
  item().closeMenu();
  mac.scheduler.runReady();
  EXPECT_EQ(item().menu(), nullptr);

  // Who opens it with the mouse meanwhile has it, too.
  item().showMenu();
  item().click(ClickEvent::rightMouseDown);
  mac.scheduler.runReady();
  item().closeMenu();
  mac.scheduler.runReady();
  EXPECT_EQ(item().menu(), nullptr);
}

TEST_F(StatusBarControllerTest, TheMenuThatIsAskedForWaitsForAnAlert) {
  process->platform().alerts.runModal(
      {.messageText = "One", .informativeText = "", .buttons = {"OK"}}, [](int) {});
  item().showMenu();
  item().showMenu();
  mac.scheduler.runReady();
  EXPECT_EQ(item().menu(), nullptr);
  EXPECT_TRUE(mac.screen.answerAlert("OK"));
  EXPECT_NE(item().menu(), nullptr);
  item().closeMenu();
  mac.scheduler.runReady();
  EXPECT_EQ(item().menu(), nullptr);
}

TEST_F(StatusBarControllerTest, AnItemThatIsMadeAnewIsToldItsValue) {
  const auto value = item().accessibilityValue();
  EXPECT_EQ(value, "Media and system controls by default");
  item().setAccessibilityValue("");
  controller().fnStateDidChange(FnState::special);
  EXPECT_EQ(item().accessibilityValue(), "");
  controller().setUp();
  EXPECT_EQ(item().accessibilityValue(), value);
}

TEST_F(StatusBarControllerTest, ARightClickOpensAMenuThatIsBuiltAnew) {
  item().click(ClickEvent::rightMouseDown);
  ASSERT_NE(item().menu(), nullptr);
  EXPECT_TRUE(item().isHighlighted());
  EXPECT_TRUE(item().wasHighlightedForMenu());
  EXPECT_EQ((*item().menu())[1].title, "Use F1-F12 by Default");
  item().closeMenu();
  keyrow().modePolicy().setGlobalFnState(FnState::standard, nullptr);
  item().click(ClickEvent::rightMouseDown);
  EXPECT_EQ((*item().menu())[1].title, "Use Media & System Controls by Default");
}

TEST_F(StatusBarControllerTest, TheMenuNamesTheShortcutOfThisUser) {
  keyrow().settings().setLocalToggleShortcut({17, "T", "t"});
  keyrow().settings().setFnReplacementModifier(FnReplacementModifier::rightOption);
  item().click(ClickEvent::rightMouseDown);
  EXPECT_EQ((*item().menu())[4].toolTip,
            "Creates or toggles an app-specific override for the frontmost app. Shortcut: Fn+T or "
            "Right Option+T");
}

TEST_F(StatusBarControllerTest, TheHighlightGoesWithTheMainQueueAfterTheMenu) {
  item().click(ClickEvent::rightMouseDown);
  item().closeMenu();
  EXPECT_TRUE(item().isHighlighted());
  mac.scheduler.runReady();
  EXPECT_FALSE(item().isHighlighted());
  EXPECT_FALSE(process->settingsWindow().isVisible());
}

TEST_F(StatusBarControllerTest, SettingsOpenOnlyAfterTheMenuHasClosed) {
  item().click(ClickEvent::rightMouseDown);
  controller().openPreferences();
  mac.scheduler.runReady();
  EXPECT_FALSE(process->settingsWindow().isVisible());
  item().closeMenu();
  EXPECT_FALSE(process->settingsWindow().isVisible());
  mac.scheduler.runReady();
  EXPECT_TRUE(process->settingsWindow().isVisible());
  EXPECT_EQ(process->settingsWindow().broughtToFrontCount(), 2);

  // Closing the menu another time opens nothing.
  process->settingsWindow().close();
  controller().menuDidClose();
  mac.scheduler.runReady();
  EXPECT_FALSE(process->settingsWindow().isVisible());
}

TEST_F(StatusBarControllerTest, RepresentedObjectsThatAreNoModesDoNothing) {
  takeWrittenModes();
  for (const std::optional<PropertyValue>& object : std::vector<std::optional<PropertyValue>>{
           std::nullopt, 2, -1, "1", true, 1.0, PropertyDictionary{}}) {
    controller().handleMenuGlobalSwitch(object);
    controller().handleMenuLocalSwitch(object);
  }
  EXPECT_THAT(takeWrittenModes(), ElementsAre());
  controller().handleMenuGlobalSwitch(1);
  controller().handleMenuLocalSwitch(0);
  EXPECT_THAT(takeWrittenModes(), ElementsAre(1, 0));
  EXPECT_EQ(stored("localFnState"), (PropertyDictionary{{textEdit, 0}}));
}

TEST_F(StatusBarControllerTest, TheLocalSwitchNeedsAnApplicationInFront) {
  mac.applications.activate(std::nullopt);
  takeWrittenModes();
  controller().handleMenuLocalSwitch(1);
  controller().toggleLocal();
  EXPECT_THAT(takeWrittenModes(), ElementsAre());
}

TEST_F(StatusBarControllerTest, AFailedWriteKeepsImageAndDots) {
  controller().toggleLocal();
  mac.faults.fail(PortCall::setHidParameter, 1);
  item().click(ClickEvent::leftMouseUp);
  EXPECT_EQ(item().image(), "fn");
  EXPECT_EQ(item().dot(), "override");
}

TEST_F(StatusBarControllerTest, QuittingRunsTheTerminationSequence) {
  controller().toggleLocal();
  item().click(ClickEvent::rightMouseDown);
  EXPECT_TRUE(item().choose("Quit"));
  EXPECT_TRUE(process->hasEnded());
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_EQ(preference(), PropertyValue{false});
}

TEST_F(StatusBarControllerTest, WakingUpAppliesTheStoredModeAgain) {
  setHardware(FnState::standard);
  keyrow().modePolicy().didWake();
  EXPECT_EQ(mac.hid.modeName(), "special");
  EXPECT_EQ(item().image(), "globe");
  EXPECT_EQ(stored("globalFnState"), PropertyValue{0});
}

TEST(StatusBarControllerWithoutItemTest, ShowsCapsLockAsSoonAsItIsSetUp) {
  SimulatedMac mac;
  mac.isCapsLockOn = true;
  mac.defaults.setValue(appIdentifier, "showCapsLockIndicator", true);
  SimulatedProcess process{mac, 501};
  // Before the first mode is known, which would bring it, too.
  mac.faults.fail(PortCall::readServiceProperty, Faults::always);
  process.keyrow().statusBarController().setUp();
  EXPECT_EQ(process.statusItem().dot(), "caps-lock");
}

TEST(StatusBarControllerWithoutItemTest, SkipsWhatHasNoItem) {
  SimulatedMac mac;
  SimulatedProcess process{mac, 501};
  auto& controller = process.keyrow().statusBarController();
  controller.fnStateDidChange(FnState::standard);
  controller.scopeDidChange(true);
  controller.setCapsLockIndicatorEnabled(false);
  controller.statusBarButtonClicked(ClickEvent::rightMouseDown, false);
  controller.showMenu();
  EXPECT_EQ(process.statusItem().image(), "none");
  EXPECT_EQ(process.statusItem().menu(), nullptr);
}

}  // namespace
}  // namespace keyrow::sim
