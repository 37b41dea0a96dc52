#include "sim/scenario/Prompt.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

#include "sim/scenario/Language.h"
#include "sim/scenario/ScenarioParser.h"

namespace keyrow::sim {
namespace {

std::string prompt(const std::string& input, PlayResult& result) {
  std::istringstream in{input};
  std::ostringstream out;
  result = Prompt{out, {}}.run(linesOf(in));
  return out.str();
}

TEST(PromptTest, ShowsWhereThingsStand) {
  PlayResult result;
  EXPECT_EQ(prompt("status\nsystem\nreport\nexit\nnever read\n", result),
            "  time        2024-03-01 08:00:00.000\n"
            "  frontmost   nobody\n"
            "  hardware    special\n"
            "  keyboards   none\n"
            "  permissions accessibility granted, input-monitoring granted\n"
            "  tap         missing\n"
            "  global      none\n"
            "  keyrow      not running\n"
            "  HIDParameters                HIDFKeyMode=0\n"
            "  com.apple.keyboard.fnState   none\n"
            "  Keyrow is not running, so it cannot read its log.\n");
  EXPECT_EQ(result.unplayableLines, 0);
}

TEST(PromptTest, ShowsARunningKeyrow) {
  PlayResult result;
  const auto output = prompt(
      "defaults write localFnState com.apple.finder=1\nfront com.apple.finder\nlaunch "
      "keyrow\nstatus\nsystem\nreport\n",
      result);
  EXPECT_THAT(output, testing::EndsWith("  frontmost   com.apple.finder\n"
                                        "  hardware    standard\n"
                                        "  keyboards   none\n"
                                        "  permissions accessibility granted, input-monitoring "
                                        "granted\n"
                                        "  tap         working\n"
                                        "  global      special function keys\n"
                                        "  override    com.apple.finder: standard function keys\n"
                                        "  keyrow      501, override in force\n"
                                        "  status      [fn] blue dot, \"Local F-Key Mode\"\n"
                                        "  window      closed\n"
                                        "  shortcut    Fn+`\n"
                                        "  HIDParameters                HIDFKeyMode=1\n"
                                        "  com.apple.keyboard.fnState   none\n"
                                        "  open                         1 EventTap\n"
                                        "  open                         1 HidManager\n"
                                        "  open                         1 RunLoopSource\n"
                                        "  open                         1 activity\n"
                                        "  open                         17 observer\n"
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
            "line:2:5: expected a duration of at most 1000h, such as 350ms, 0.35s, 5min, 1h or 2d, "
            "found the end of the line\n"
            "\n  nothing\n"
            "line:5:1: expected the hardware to be standard, but it is special\n"
            "\n                ✓ hardware special\n");
  EXPECT_EQ(result.unplayableLines, 2);
  EXPECT_EQ(result.unmetExpectations, 1);
}

TEST(PromptTest, HelpsWithTheWholeLanguage) {
  PlayResult result;
  const auto all = prompt("help\n", result);
  for (const auto& part : language()) {
    for (const auto& word : part.actions) EXPECT_THAT(all, testing::HasSubstr(word.summary));
    for (const auto& word : part.expectations) EXPECT_THAT(all, testing::HasSubstr(word.summary));
  }
}

TEST(PromptTest, HelpsWithEveryWord) {
  PlayResult result;
  EXPECT_EQ(prompt("help wait\n", result), "  wait DURATION\n      Time passes.\n");
  for (const auto* word : {"expect hardware", "hardware", "no", "times", "then", "MODE", "CALL",
                           "undo", "save", "takeover", "set-hid-parameter", "leaks"}) {
    const auto help = prompt("help " + std::string{word} + "\n", result);
    EXPECT_THAT(help, testing::Not(testing::HasSubstr("Nothing is called"))) << word;
    EXPECT_THAT(help, testing::HasSubstr(word));
  }
  EXPECT_EQ(prompt("help toggle\n", result),
            "  Nothing is called \"toggle\". help lists everything.\n");
}

TEST(PromptTest, TakesTheLastLineBack) {
  PlayResult result;
  EXPECT_THAT(prompt("undo\nhardware standard\nhardware HIDFKeyMode=7\nundo\nexpect hardware "
                     "standard\nundo\nundo\nexpect hardware special\n",
                     result),
              testing::HasSubstr("  There is nothing to take back.\n"));
  EXPECT_EQ(result.metExpectations, 2);
}

TEST(PromptTest, ALineThatIsStoppedLeavesEverythingAsItWas) {
  PlayResult result;
  std::istringstream in{
      "keyboard k\nhardware standard\nhold A on k\nwait 3d\nexpect hardware standard\n"
      "expect key \"A down reaches nobody\"\n"};
  std::ostringstream out;
  result = Prompt{out, {.isInteractive = false, .inColour = false}}.run(linesOf(in));
  EXPECT_THAT(out.str(),
              testing::HasSubstr("line:4:1: this line would cause more than a million events\n"));
  EXPECT_EQ(result.metExpectations, 2);
  EXPECT_EQ(result.unplayableLines, 1);
}

TEST(PromptTest, ALineWithSomethingWrongLeavesEverythingAsItWas) {
  PlayResult result;
  prompt("launch keyrow\nanswer \"Cancel\"\nexpect process 501\n", result);
  EXPECT_EQ(result.metExpectations, 1);
  EXPECT_EQ(result.unplayableLines, 1);
}

TEST(PromptTest, SavesWhatWasPlayedAndPlaysItAgain) {
  const auto path = testing::TempDir() + "keyrow-saved-" + std::to_string(getpid()) + ".txt";
  std::filesystem::remove(path);
  PlayResult result;
  const auto saving =
      prompt("# A story.\nhardware standard\nwrong\nexpect hardware standard\nsave " + path +
                 "\nsave " + path + "\n",
             result);
  EXPECT_THAT(saving, testing::HasSubstr("  3 lines saved.\n"));
  std::ifstream file{path};
  const std::string saved{std::istreambuf_iterator<char>{file}, {}};
  EXPECT_EQ(saved, "# A story.\nhardware standard\nexpect hardware standard\n");

  prompt("play " + path + "\nexpect hardware standard\n", result);
  EXPECT_EQ(result.metExpectations, 2);
  EXPECT_THAT(prompt("save " + path + "\n", result), testing::HasSubstr("is there already"));
  EXPECT_THAT(prompt("save\n", result), testing::HasSubstr("needs the name of a file"));
  EXPECT_THAT(prompt("save /nowhere/at/all\n", result), testing::HasSubstr("could not be written"));
  prompt("play /nowhere\n", result);
  EXPECT_EQ(result.unplayableLines, 1);
  std::filesystem::remove(path);
}

TEST(PromptTest, BlanksAroundItsWordsDoNotMatter) {
  PlayResult result;
  EXPECT_THAT(prompt(" status \r\nhelp  wait \n exit \nfront nobody\n", result),
              testing::AllOf(testing::HasSubstr("  keyrow      not running\n"),
                             testing::HasSubstr("  wait DURATION\n")));
  EXPECT_EQ(result.unplayableLines, 0);
}

TEST(PromptTest, ARefusedLineIsNoPartOfWhatHappened) {
  PlayResult result;
  prompt("press A on none\nunplug nothing\nexpect key\n", result);
  EXPECT_EQ(result.metExpectations, 1);
}

TEST(PromptTest, WhatAPersonTypesWrongDoesNotCount) {
  std::istringstream in{"wrong\nunplug nothing\nwait 1s\nexpect hardware standard\n"};
  std::ostringstream out;
  const auto result = Prompt{out, {.isInteractive = true, .inColour = false}}.run(linesOf(in));
  EXPECT_EQ(result.unplayableLines, 0);
  EXPECT_EQ(result.unmetExpectations, 1);
  EXPECT_THAT(out.str(), testing::HasSubstr("\n  08:00:01.000\n"));
}

TEST(PromptTest, CompletesWords) {
  std::istringstream in{"install com.example.one\nkeyboard usb1\nlaunch keyrow\nclick right\n"};
  std::ostringstream out;
  Prompt prompt{out, {}};
  prompt.run(linesOf(in));
  using testing::ElementsAre;
  EXPECT_THAT(prompt.completions("unin"), ElementsAre("uninstall"));
  EXPECT_THAT(prompt.completions("front com.ex"), ElementsAre("com.example.one"));
  EXPECT_THAT(prompt.completions("press A on u"), ElementsAre("unregister-login-item", "usb1"));
  EXPECT_THAT(prompt.completions("choose \"Q"), ElementsAre("\"Quit\""));
  EXPECT_THAT(prompt.completions("expect glo"), ElementsAre("global"));
  EXPECT_THAT(prompt.completions("fail open-h"), ElementsAre("open-hid-manager"));
}

}  // namespace
}  // namespace keyrow::sim
