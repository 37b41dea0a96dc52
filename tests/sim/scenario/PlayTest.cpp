#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "sim/scenario/Prompt.h"
#include "sim/scenario/ScenarioParser.h"
#include "sim/scenario/TimelinePrinter.h"

namespace keyrow::sim {
namespace {

struct Played {
  PlayResult result;
  std::string output;
};

Played play(std::string_view text, Detail detail = Detail::failuresOnly) {
  const auto scenario = parseScenario("play.txt", text);
  EXPECT_TRUE(scenario);
  std::ostringstream out;
  TimelinePrinter printer{out, detail, false};
  return {playScenario(*scenario, printer), out.str()};
}

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
        Unmet{"defaults write a b=\"c\" d=true\nexpect defaults a 3",
              "play.txt:2:1: expected the setting a to be 3, but it is {b=\"c\" d=true}"},
        Unmet{"preference true\nlaunch keyrow\nexpect log nothing",
              "play.txt:3:1: expected nothing in the log, but the log says\n"
              "    state notice \"Initialized the stored global function key mode from System "
              "Settings: standard function keys.\""},
        Unmet{"preference true\nlaunch keyrow\nwait 500ms\n"
              "expect log state \"Initialized the stored global function key mode from System "
              "Settings: standard function keys.\"",
              "play.txt:4:1: expected in the log: state \"Initialized the stored global function "
              "key mode from System Settings: standard function keys.\", but nothing was logged"},
        Unmet{"preference true\nlaunch keyrow\n"
              "expect log state error \"Initialized the stored global function key mode from "
              "System Settings: standard function keys.\"",
              "play.txt:3:1: expected in the log: state error \"Initialized the stored global "
              "function key mode from System Settings: standard function keys.\", but the log "
              "says\n    state notice \"Initialized the stored global function key mode from "
              "System Settings: standard function keys.\""},
        Unmet{"keyboard k transport=USB\nlaunch keyrow\npress A on k\nexpect source none",
              "play.txt:4:1: expected the source of a key event now to be none, but it is k"},
        Unmet{"launch keyrow\nexpect shortcut \"F5\"",
              "play.txt:2:1: expected the shortcut to be F5, but it is `"},
        Unmet{"launch keyrow\nexpect status image=fn",
              "play.txt:2:1: expected the status item's image to be fn, but it is globe"},
        Unmet{"launch keyrow\nexpect status image=globe dot=override",
              "play.txt:2:1: expected the status item's dot to be override, but it is none"},
        Unmet{"launch keyrow\nexpect status dot=none tooltip=\"Local F-Key Mode\"",
              "play.txt:2:1: expected the dot's tool tip to be Local F-Key Mode, but it is none"},
        Unmet{"expect status image=fn",
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
        Unmet{"sleep\nexpect screen nothing",
              "play.txt:2:1: expected nothing on the screen, but there is\n    the Mac sleeps"},
        Unmet{"expect screen \"x\"",
              "play.txt:1:1: expected \"x\" on the screen, but there is nothing"},
        Unmet{"expect tap working",
              "play.txt:1:1: expected the event tap to be working, but it is missing"},
        Unmet{"press A on none\nexpect key nothing",
              "play.txt:2:1: expected nothing from the keys, but there is\n    A down reaches "
              "nobody\n"
              "    A up reaches nobody"},
        Unmet{"expect instances 1",
              "play.txt:1:1: expected the number of running instances to be 1, but it is 0"},
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
        Unmet{"press A on usb1", "play.txt:1:1: no keyboard usb1 is attached"},
        Unmet{"click", "play.txt:1:1: Keyrow is not running"},
        Unmet{"click \"Quit\"", "play.txt:1:1: Keyrow is not running"},
        Unmet{"launch keyrow\nclick \"Quit\"", "play.txt:2:1: the settings window is closed"},
        Unmet{"launch keyrow\nreopen keyrow\nclick \"Quiet\"",
              "play.txt:3:1: nothing here can be clicked that says Quiet"},
        Unmet{"choose \"Quit\"", "play.txt:1:1: Keyrow is not running"},
        Unmet{"hang keyrow", "play.txt:1:1: Keyrow is not running"},
        Unmet{"resume keyrow", "play.txt:1:1: Keyrow is not running"},
        Unmet{"reopen keyrow", "play.txt:1:1: Keyrow is not running"},
        Unmet{"close window", "play.txt:1:1: Keyrow is not running"},
        Unmet{"tab About", "play.txt:1:1: Keyrow is not running"},
        Unmet{"launch keyrow\ntab About", "play.txt:2:1: the settings window is closed"},
        Unmet{"launch keyrow\nchoose \"Quit\"", "play.txt:2:1: no menu is open"},
        Unmet{"launch keyrow\nclick right\nchoose \"Quiet\"",
              "play.txt:3:1: the menu does not offer Quiet"},
        Unmet{"wake", "play.txt:1:1: the Mac is awake"},
        Unmet{"sleep\nsleep", "play.txt:2:1: the Mac sleeps already"},
        Unmet{"quit keyrow", "play.txt:1:1: Keyrow is not running"},
        Unmet{"kill keyrow", "play.txt:1:1: Keyrow is not running"}));

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
            "                  menu bar  image none → globe\n"
            "                  stored    hasPromptedAccessibility = true\n"
            "                  stored    globalFnState = 0\n"
            "                  fault     set-hid-parameter: IOHIDSetCFTypeParameter is refused\n"
            "                  log       state error: Failed to apply the stored global function "
            "key mode: Failed to write the function key mode.\n"
            "                ✓ global special\n");
}

std::string prompt(const std::string& input, PlayResult& result) {
  std::istringstream in{input};
  std::ostringstream out;
  result = runPrompt(in, out, {});
  return out.str();
}

TEST(PromptTest, ShowsWhereThingsStand) {
  PlayResult result;
  EXPECT_EQ(prompt("status\nhardware\nlog\nexit\nnever read\n", result),
            "  frontmost   none\n"
            "  keyboard    special\n"
            "  global      none\n"
            "  keyrow      not running\n"
            "  HIDParameters                {HIDFKeyMode=0}\n"
            "  com.apple.keyboard.fnState   none\n"
            "  Keyrow is not running, so it cannot read its log.\n");
  EXPECT_EQ(result.unplayableLines, 0);
}

TEST(PromptTest, ShowsARunningKeyrow) {
  PlayResult result;
  const auto output = prompt(
      "defaults write localFnState com.apple.finder=1\nfront com.apple.finder\nlaunch "
      "keyrow\nstatus\nhardware\nlog\n",
      result);
  EXPECT_THAT(output, testing::EndsWith("  frontmost   com.apple.finder\n"
                                        "  keyboard    standard\n"
                                        "  global      none\n"
                                        "  override    com.apple.finder: standard function keys\n"
                                        "  keyrow      running, override in force\n"
                                        "  menu bar    [fn] blue dot, \"Local F-Key Mode\"\n"
                                        "  window      closed\n"
                                        "  shortcut    Fn+`\n"
                                        "  HIDParameters                {HIDFKeyMode=1}\n"
                                        "  com.apple.keyboard.fnState   none\n"
                                        "  open                         1 EventTap\n"
                                        "  open                         1 HidManager\n"
                                        "  open                         1 RunLoopSource\n"
                                        "  open                         8 observer\n"
                                        "  open                         1 thread\n"
                                        "No recent Keyrow logs were available.\n"));
}

TEST(PromptTest, GoesOnAfterAWrongLine) {
  PlayResult result;
  const auto output = prompt(std::string(2 * maximumLineLength, 'x') +
                                 "\nwait\n\n# nothing\nexpect hardware "
                                 "standard\nexpect hardware special",
                             result);
  EXPECT_EQ(output,
            "line:1:4097: expected the end of the line after 4096 bytes at most\n"
            "line:2:5: expected a duration of at most 1000h, such as 350ms, 0.35s, 5min or 1h, "
            "found the end of the line\n"
            "\n  nothing\n"
            "line:5:1: expected the hardware to be standard, but it is special\n"
            "\n                ✓ hardware special\n");
  EXPECT_EQ(result.unplayableLines, 2);
  EXPECT_EQ(result.unmetExpectations, 1);
}

TEST(PromptTest, HelpsWithTheWholeLanguageOrAPartOfIt) {
  PlayResult result;
  EXPECT_EQ(prompt("help wait\n", result), "  wait DURATION\n      Time passes.\n");
  const auto all = prompt("help\n", result);
  for (const auto& command : keyrowCommands()) {
    EXPECT_THAT(all, testing::HasSubstr(std::string{command.summary}));
  }
}

}  // namespace
}  // namespace keyrow::sim
