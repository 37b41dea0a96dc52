#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/sim/scenario/Played.h"

namespace keyrow::sim {
namespace {

TEST(PlayTest, AnExpectationThatHoldsIsCountedAndSaysNothing) {
  const auto played = play("expect hardware special\nexpect preference none\n");
  EXPECT_EQ(played.result.metExpectations, 2);
  EXPECT_EQ(played.result.unmetExpectations, 0);
  EXPECT_EQ(played.output, "");
}

struct Unmet {
  std::string_view scenario;
  std::string_view message;
};

class UnmetTest : public testing::TestWithParam<Unmet> {};

TEST_P(UnmetTest, SaysWhatWasExpectedAndWhatWasThere) {
  const auto played = play(GetParam().scenario);
  EXPECT_EQ(played.result.unmetExpectations, 1);
  EXPECT_EQ(played.output, std::string{GetParam().message} + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    EveryExpectation, UnmetTest,
    testing::Values(
        Unmet{"expect hardware standard",
              "play.txt:1:1: expected the hardware to be standard, but it is special"},
        Unmet{"preference 0.5\n expect preference true",
              "play.txt:2:2: expected the system preference to be true, but it is 0.5"},
        Unmet{"expect global special",
              "play.txt:1:1: expected the stored global mode to be special, but it is none"},
        Unmet{"defaults write localFnState a=1\nexpect override a none",
              "play.txt:2:1: expected the override of a to be none, but it is standard"},
        Unmet{"launch keyrow\nexpect scope local",
              "play.txt:2:1: expected the scope to be local, but it is global"},
        Unmet{"expect scope local",
              "play.txt:1:1: expected the scope to be local, but Keyrow is not running"},
        Unmet{"defaults write localFnState b=\"c\" d=true\nexpect defaults localFnState 3",
              "play.txt:2:1: expected the setting localFnState to be 3, but it is b=\"c\" d=true"},
        Unmet{"preference true\nlaunch keyrow\nexpect no log",
              "play.txt:3:1: expected no log, but there was:\n"
              "    log state notice \"Initialized the stored global function key mode from System "
              "Settings: standard function keys.\""},
        Unmet{"preference true\nlaunch keyrow\nwait 500ms\nexpect log state \"Initialized.\"",
              "play.txt:4:1: expected log state \"Initialized.\", but there was nothing like it"},
        Unmet{"preference true\nlaunch keyrow\nexpect log state error",
              "play.txt:3:1: expected log state error, but there was:\n"
              "    log state notice \"Initialized the stored global function key mode from System "
              "Settings: standard function keys.\""},
        Unmet{"preference true\nlaunch keyrow\nexpect log state 2 times",
              "play.txt:3:1: expected log state 2 times, but there was:\n"
              "    log state notice \"Initialized the stored global function key mode from System "
              "Settings: standard function keys.\""},
        Unmet{"press A on none\nexpect key \"A up reaches nobody\" then key \"A down reaches "
              "nobody\"",
              "play.txt:2:1: expected key \"A up reaches nobody\" then key \"A down reaches "
              "nobody\", but there was:\n"
              "    key \"A down reaches nobody\"\n"
              "    key \"A up reaches nobody\""},
        Unmet{"hardware standard\nhardware special\nexpect hardware special -> standard",
              "play.txt:3:1: expected hardware special -> standard, but there was:\n"
              "    hardware standard -> special"},
        Unmet{"launch keyrow\nexpect calls set-hid-parameter 2",
              "play.txt:2:1: expected the number of calls of set-hid-parameter to be 2, but it is "
              "1"},
        Unmet{"keyboard k transport=USB\nlaunch keyrow\npress A on k\nexpect source none",
              "play.txt:4:1: expected the source of a key event now to be none, but it is k"},
        Unmet{"launch keyrow\nexpect shortcut \"F5\"",
              "play.txt:2:1: expected the shortcut to be F5, but it is `"},
        Unmet{"launch keyrow\nexpect status image fn",
              "play.txt:2:1: expected the status item's image to be fn, but it is globe"},
        Unmet{"launch keyrow\nexpect status image globe dot override",
              "play.txt:2:1: expected the status item's dot to be override, but it is none"},
        Unmet{"launch keyrow\nexpect status dot none tooltip \"Local F-Key Mode\"",
              "play.txt:2:1: expected the status item's tooltip to be \"Local F-Key Mode\", but it "
              "is "
              "none"},
        Unmet{"expect status image fn",
              "play.txt:1:1: expected a status item, but Keyrow is not running"},
        Unmet{"launch keyrow\nexpect menu \"Quit\" enabled",
              "play.txt:2:1: expected an open menu, but there is none"},
        Unmet{"launch keyrow\nclick right\nexpect menu \"Quit\" disabled",
              "play.txt:3:1: expected the menu item \"Quit\" to be disabled, but it is enabled"},
        Unmet{"launch keyrow\nclick right\nexpect menu \"Quiet\" enabled",
              "play.txt:3:1: expected the menu item \"Quiet\" to be enabled, but it is missing"},
        Unmet{"launch keyrow\nexpect window General",
              "play.txt:2:1: expected the settings window to be General, but it is closed"},
        Unmet{"expect window closed",
              "play.txt:1:1: expected a settings window, but Keyrow is not running"},
        Unmet{"launch keyrow\nclick right\nexpect menu \"Quit\" enabled at 1",
              "play.txt:3:1: expected the place of the menu item \"Quit\" to be 1, but it is 6"},
        Unmet{"launch keyrow\nclick right\nexpect menu \"Quit\" enabled key \"\"",
              "play.txt:3:1: expected the key of the menu item \"Quit\" to be \"\", but it is "
              "\"⌘q\""},
        Unmet{"launch keyrow\nclick right\nexpect menu \"Quit\" enabled tooltip \"x\"",
              "play.txt:3:1: expected the tool tip of the menu item \"Quit\" to be \"x\", but it "
              "is \"\""},
        Unmet{"launch keyrow\nclick right\nexpect menu closed",
              "play.txt:3:1: expected the menu to be closed, but it is open"},
        Unmet{"sleep\nexpect no screen",
              "play.txt:2:1: expected no screen, but there was:\n    screen \"the Mac sleeps\""},
        Unmet{"expect screen \"x\"",
              "play.txt:1:1: expected screen \"x\", but there was nothing like it"},
        Unmet{"expect tap working",
              "play.txt:1:1: expected the event tap to be working, but it is missing"},
        Unmet{"press A on none\nexpect no key",
              "play.txt:2:1: expected no key, but there was:\n"
              "    key \"A down reaches nobody\"\n"
              "    key \"A up reaches nobody\""},
        Unmet{"front unnamed\npress A on none\nexpect key \"A down reaches nobody\"",
              "play.txt:3:1: expected key \"A down reaches nobody\", but there was:\n"
              "    key \"A down reaches an application without an identifier\"\n"
              "    key \"A up reaches an application without an identifier\""},
        Unmet{"expect process 501",
              "play.txt:1:1: expected the processes of Keyrow to be 501, but it is none"},
        Unmet{"launch keyrow\nkill keyrow\nexpect process 501 quit",
              "play.txt:3:1: expected process 501 quit, but there was:\n    process 501 killed"},
        Unmet{"launch keyrow\nexpect report \"x\"",
              "play.txt:2:1: expected the log report to hold \"x\", but it is\n"
              "No recent Keyrow logs were available."}));

TEST(PlayTest, LeaksAreWhatAnEndedProcessStillHolds) {
  Stage stage;
  const auto expectation = parseLine("expect leaks none", 1);
  stage.launchKeyrow();
  EXPECT_EQ(playStep(**expectation, stage).kind, Outcome::Kind::done);

  const OpenHandle connection{stage.mac.openHandles, "HidConnection", stage.process()->processID()};
  const OpenHandle manager{stage.mac.openHandles, "HidManager", 499};
  const auto outcome = playStep(**expectation, stage);
  EXPECT_EQ(outcome.kind, Outcome::Kind::unmet);
  EXPECT_EQ(outcome.message, "expected no leaks, but still open: 1 HidConnection, 1 HidManager");
}

class UnplayableTest : public testing::TestWithParam<Unmet> {};

TEST_P(UnplayableTest, EndsTheScenarioAndSaysWhy) {
  const auto played = play(std::string{GetParam().scenario} + "\nexpect hardware special");
  EXPECT_EQ(played.result.unplayableLines, 1);
  EXPECT_EQ(played.result.metExpectations, 0);
  EXPECT_EQ(played.output, std::string{GetParam().message} + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    EveryReason, UnplayableTest,
    testing::Values(
        Unmet{"front com.example.app", "play.txt:1:1: com.example.app is not installed"},
        Unmet{"uninstall com.example.app", "play.txt:1:1: com.example.app is not installed"},
        Unmet{"unplug usb1", "play.txt:1:1: no keyboard usb1 is attached"},
        Unmet{"keyboard a\nkeyboard b\nunplug usb1",
              "play.txt:3:1: no keyboard usb1 is attached, but a, b"},
        Unmet{"press A on usb1", "play.txt:1:1: no keyboard usb1 is attached"},
        Unmet{"click", "play.txt:1:1: Keyrow is not running"},
        Unmet{"click \"Quit\"", "play.txt:1:1: Keyrow is not running"},
        Unmet{"launch keyrow\nclick \"Quit\"", "play.txt:2:1: the settings window is closed"},
        Unmet{"launch keyrow\nreopen keyrow\nclick \"Quiet\"",
              "play.txt:3:1: nothing here can be clicked that says \"Quiet\", but \"Accessibility "
              "Permission\", \"?\", \"Launch at login\", \"Show Caps Lock indicator\", \"Apply Fn "
              "function to non-Apple vendor external F keys\", \"Fn + `\", \"Quit\""},
        Unmet{"launch keyrow\nreopen keyrow\nclick \"Reset\"",
              "play.txt:3:1: \"Reset\" is disabled"},
        Unmet{"choose \"Quit\"", "play.txt:1:1: Keyrow is not running"},
        Unmet{"hang keyrow", "play.txt:1:1: Keyrow is not running"},
        Unmet{"resume keyrow", "play.txt:1:1: Keyrow is not running"},
        Unmet{"run as anna keyrow mode", "play.txt:1:1: anna is not logged in"},
        Unmet{"reopen keyrow", "play.txt:1:1: Keyrow is not running"},
        Unmet{"close window", "play.txt:1:1: Keyrow is not running"},
        Unmet{"tab About", "play.txt:1:1: Keyrow is not running"},
        Unmet{"launch keyrow\ntab About", "play.txt:2:1: the settings window is closed"},
        Unmet{"launch keyrow\nchoose \"Quit\"", "play.txt:2:1: no menu is open"},
        Unmet{"launch keyrow\nclick right\nchoose \"Quiet\"",
              "play.txt:3:1: the menu does not offer \"Quiet\", but \"Use F1-F12 by Default\", "
              "\"Settings…\", \"Quit\""},
        Unmet{"wake", "play.txt:1:1: the Mac is awake"},
        Unmet{"sleep\nsleep", "play.txt:2:1: the Mac sleeps already"},
        Unmet{"quit keyrow", "play.txt:1:1: Keyrow is not running"},
        Unmet{"kill keyrow", "play.txt:1:1: Keyrow is not running"},
        Unmet{"launch keyrow\nquit keyrow 499", "play.txt:2:1: Keyrow 499 is not running, but 501"},
        Unmet{"launch keyrow\nresume keyrow", "play.txt:2:1: Keyrow 501 does not hang"},
        Unmet{"launch keyrow\nclose menu", "play.txt:2:1: no menu is open"},
        Unmet{"launch keyrow\nclose window", "play.txt:2:1: the settings window is closed"},
        Unmet{"front none\nlaunch keyrow\nclick right\nchoose \"Use F1-F12 in This App Only\"",
              "play.txt:4:1: \"Use F1-F12 in This App Only\" is disabled; the menu offers \"Use "
              "F1-F12 by Default\", \"Settings…\", \"Quit\""},
        Unmet{"launch keyrow\nreopen keyrow\nchoose \"Left Option\"\nchoose \"Fn\"",
              "play.txt:4:1: the pop-up does not offer \"Fn\", but \"Off\", \"Left Control\", "
              "\"Left Option\", \"Left Command\", \"Left Shift\", \"Right Control\", \"Right "
              "Option\", \"Right Command\", \"Right Shift\""},
        Unmet{"launch keyrow\nreopen keyrow\ntab About\nchoose \"Off\"",
              "play.txt:4:1: there is no pop-up in this tab"},
        Unmet{"launch keyrow\nexpect pane colour \"red\"",
              "play.txt:2:1: the settings window shows nothing called colour, but permission, "
              "permission-button, permission-tip, permission-help, shortcut, shortcut-tip, reset, "
              "shortcut-hint, replacement, replacement-hint, version, login-item, "
              "caps-lock-indicator, "
              "external-keys, diagnostics, auto-update"},
        Unmet{"defaults write localFnState 1\ndefaults add localFnState a=special",
              "play.txt:2:1: localFnState is no dictionary, but 1"},
        Unmet{"fail read-log 2 times\nfail read-log",
              "play.txt:2:1: read-log is to fail already, 2 times; repair ends that"},
        Unmet{"launch keyrow\nanswer \"OK\"", "play.txt:2:1: no alert is open"},
        Unmet{"fail create-event-tap always\nlaunch keyrow\nwait 8s\nuser anna\nanswer \"OK\"",
              "play.txt:5:1: no alert is open"},
        Unmet{
            "fail create-event-tap always\nlaunch keyrow\nwait 8s\nanswer \"Cancel\"",
            "play.txt:4:1: the alert \"Keyrow could not start keyboard monitoring\" has no button "
            "\"Cancel\", but \"Open Accessibility Settings\", \"OK\""},
        Unmet{"fail create-event-tap always\nlaunch keyrow\nwait 8s\nclick right",
              "play.txt:4:1: the alert \"Keyrow could not start keyboard monitoring\" has to be "
              "answered first"}));

TEST(PlayTest, ALineThatWouldNeverEndIsStopped) {
  Stage stage;
  stage.mac.scheduler.schedule(std::chrono::nanoseconds{1}, [&stage] {
    struct Again {
      Scheduler& scheduler;
      void operator()() const { scheduler.schedule(std::chrono::nanoseconds{1}, *this); }
    };
    Again{stage.mac.scheduler}();
  });
  const auto outcome = playStep(**parseLine("wait 1h", 1), stage);
  EXPECT_EQ(outcome.kind, Outcome::Kind::endless);
  EXPECT_EQ(outcome.message, "this line would cause more than a million events");
}

TEST(PlayTest, TheUpdaterRemembersItsSwitch) {
  const auto played = play(
      "launch keyrow\nreopen keyrow\ntab About\nexpect pane auto-update off\n"
      "click \"Automatically check for updates\"\nexpect pane auto-update on\n"
      "quit keyrow\nlaunch keyrow\nreopen keyrow\ntab About\nexpect pane auto-update on\n");
  EXPECT_EQ(played.output, "");
}

TEST(PlayTest, WhoeverWasInFrontBeforeKeyrowComesBackWhenItEnds) {
  const auto played = play(
      "install com.example.app\nfront com.example.app\nlaunch keyrow\nreopen keyrow\n"
      "press A on none\nexpect key \"A down reaches app.keyrow.Keyrow\"\n"
      "kill keyrow\npress A on none\nexpect key \"A down reaches com.example.app\"\n");
  EXPECT_EQ(played.output, "");
}

TEST(PlayTest, AnInputMayComeLaterThanItsEvent) {
  const auto played = play(
      "keyboard k transport=USB\nlaunch keyrow\npress A on k late 5ms\nexpect source none\n"
      "wait 5ms\nexpect source k at -5ms\n");
  EXPECT_EQ(played.output, "");
}

TEST(PlayTest, AWordAloneStandsForAnyEventOfIt) {
  const auto played = play(
      "fail set-hid-parameter\nlaunch keyrow\nexpect fault then log\nexpect process 1 times\n"
      "expect status\nexpect fault 1 times\nexpect no hardware\n");
  EXPECT_EQ(played.output, "");
  EXPECT_EQ(played.result.metExpectations, 5);
}

TEST(PlayTest, EveryKeyCanSendAFlagsChangedEvent) {
  const auto played = play(
      "flags-changed caps-lock\nflags-changed F5 with fn+shift\nexpect key \"F5 flags with "
      "fn+shift reaches nobody\"\n");
  EXPECT_EQ(played.output, "");
}

TEST(PlayTest, AFailingWriteOfTheDefaultsStoresNothing) {
  const auto played = play(
      "launch keyrow\nfail write-defaults\nclick\nexpect fault write-defaults\n"
      "expect hardware special -> standard\nexpect defaults globalFnState 0\n");
  EXPECT_EQ(played.output, "");
}

TEST(PlayTest, TheMachineStaysOnForAHundredYearsAndNotLonger) {
  std::string text;
  for (int count = 0; count < 900; ++count) text += "wait 1000h\n";
  const auto played = play(text);
  EXPECT_EQ(played.result.unplayableLines, 1);
  EXPECT_EQ(played.output,
            "play.txt:877:1: the machine cannot stay on for more than a hundred years\n");
}

TEST(PlayTest, SettingsReachTheDefaults) {
  const auto played = play(
      "launch keyrow\nreopen keyrow\n"
      "click \"Show Caps Lock indicator\"\nexpect defaults showCapsLockIndicator true\n"
      "click \"Show Caps Lock indicator\"\nexpect defaults showCapsLockIndicator false\n"
      "click \"Apply Fn function to non-Apple vendor external F keys\"\n"
      "expect defaults applyFnModeToExternalFunctionKeys true\n"
      "choose \"Right Command\"\nexpect defaults fnReplacementModifier \"rightCommand\"\n"
      "choose \"Off\"\nexpect defaults fnReplacementModifier none\n"
      "tab About\nclick \"Include enhanced diagnostics in logs\"\n"
      "expect defaults enhancedDiagnosticsEnabled true\n");
  EXPECT_EQ(played.output, "");
  EXPECT_EQ(played.result.metExpectations, 6);
}

TEST(PlayTest, TheTimelineReadsLikeAStory) {
  const auto played = play(
      "# Morning.\n"
      "#\n"
      "front com.apple.finder\n"
      "wait 1.5s\n"
      "fail set-hid-parameter\n"
      "launch keyrow\n"
      "expect global special\n",
      Detail::timeline);
  EXPECT_EQ(played.output,
            "\nplay.txt\n"
            "\n"
            "  Morning.\n"
            "\n"
            "\n"
            "  08:00:00.000  front com.apple.finder\n"
            "                wait 1.5s\n"
            "  08:00:01.500  fail set-hid-parameter\n"
            "                launch keyrow\n"
            "                  process 501 launched\n"
            "                  status image none -> globe\n"
            "                  status value none -> \"Media and system controls by default\"\n"
            "                  defaults hasPromptedAccessibility none -> true\n"
            "                  tap missing -> working\n"
            "                  defaults lastSeenFnStatePreference none -> -1\n"
            "                  defaults globalFnState none -> 0\n"
            "                  fault set-hid-parameter\n"
            "                  log state error \"Failed to apply the stored global function key "
            "mode: Failed to write the function key mode.\"\n"
            "                ✓ global special\n");
}

TEST(PlayTest, ANewDayIsToldByItsDate) {
  const auto played = play("wait 15h\nwait 2d\nfront none", Detail::timeline);
  EXPECT_EQ(played.output,
            "\nplay.txt\n"
            "  08:00:00.000  wait 15h\n"
            "  23:00:00.000  wait 2d\n"
            "  2024-03-03\n"
            "  23:00:00.000  front none\n");
}

}  // namespace
}  // namespace keyrow::sim
