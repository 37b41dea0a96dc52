#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>

#include "sim/machine/PortCall.h"
#include "sim/scenario/ScenarioParser.h"

namespace keyrow::sim {
namespace {

std::vector<Command> wholeLanguage() {
  std::vector<Command> commands;
  for (const auto group : actions()) commands.insert(commands.end(), group.begin(), group.end());
  for (const auto group : expectations()) {
    commands.insert(commands.end(), group.begin(), group.end());
  }
  return commands;
}

std::string documentation() {
  std::ifstream file{KEYROW_SOURCE_DIR "/docs/scenarios.md"};
  const std::string text{std::istreambuf_iterator<char>{file}, {}};
  // In a Markdown table a bar has to be escaped.
  return std::regex_replace(text, std::regex{R"(\\\|)"}, "|");
}

TEST(LanguageTest, EveryCommandHasAnExampleThatParses) {
  for (const auto& command : wholeLanguage()) {
    const auto step = parseLine(command.example, 1);
    EXPECT_TRUE(step) << command.example << ": " << (step ? "" : step.error().message);
    EXPECT_TRUE(command.example.starts_with(command.words)) << command.example;
  }
}

TEST(LanguageTest, TheDocumentationHasEveryCommandWithItsExample) {
  const auto documented = documentation();
  for (const auto& command : wholeLanguage()) {
    EXPECT_NE(documented.find("`" + std::string{command.usage} + "`"), std::string::npos)
        << command.usage;
    EXPECT_NE(documented.find(command.example), std::string::npos) << command.example;
  }
}

TEST(LanguageTest, TheDocumentationHasEveryCallThatCanFail) {
  const auto documented = documentation();
  for (const auto& call : portCalls) {
    const auto row = "| `" + std::string{call.name} + "` | " + std::string{call.failure} + " |";
    EXPECT_NE(documented.find(row), std::string::npos) << row;
  }
}

struct WrongLine {
  std::string_view line;
  std::size_t column;
  std::string_view message;
};

class WrongLineTest : public testing::TestWithParam<WrongLine> {};

TEST_P(WrongLineTest, NamesTheColumnAndWhatWasExpected) {
  const auto step = parseLine(GetParam().line, 1);
  ASSERT_FALSE(step);
  EXPECT_EQ(step.error().message, GetParam().message);
  EXPECT_EQ(step.error().column, GetParam().column);
}

INSTANTIATE_TEST_SUITE_P(
    AllParts, WrongLineTest,
    testing::Values(
        WrongLine{"frnt com.apple.finder", 1,
                  "expected an action such as front or launch, or expect, found \"frnt\""},
        WrongLine{"\"front\" x", 1,
                  "expected an action such as front or launch, or expect, found \"front\""},
        WrongLine{"  front", 8, "expected a bundle identifier or none, found the end of the line"},
        WrongLine{"front a b", 9, "expected the end of the line, found \"b\""},
        WrongLine{"expect everything", 8,
                  "expected one of hardware, preference, global, override, scope, defaults, log, "
                  "source, shortcut, report, leaks, status, menu, window, screen, instances, tap, "
                  "key, pane, draft, attachment, notification, found "
                  "\"everything\""},
        WrongLine{"expect", 7,
                  "expected one of hardware, preference, global, override, scope, defaults, log, "
                  "source, shortcut, report, leaks, status, menu, window, screen, instances, tap, "
                  "key, pane, draft, attachment, notification, found "
                  "the end of the line"},
        WrongLine{"expect hardware 1", 17, "expected special, standard or unreadable, found \"1\""},
        WrongLine{"wait soon", 6,
                  "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min or 1h, found "
                  "\"soon\""},
        WrongLine{"wait -1s", 6,
                  "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min or 1h, found "
                  "\"-1s\""},
        WrongLine{"wait 1001h", 6,
                  "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min or 1h, found "
                  "\"1001h\""},
        WrongLine{"wait 1.2.3s", 6,
                  "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min or 1h, found "
                  "\"1.2.3s\""},
        WrongLine{"wait s", 6,
                  "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min or 1h, found "
                  "\"s\""},
        WrongLine{"expect source usb1 at 10ms", 23,
                  "expected a signed duration, such as +10ms or -0.2s, found \"10ms\""},
        WrongLine{"launch missiles", 8, "expected \"keyrow\", found \"missiles\""},
        WrongLine{"keyboard é colour=red", 12,
                  "expected vendor=, product=, manufacturer=, transport=, built-in=, location=, "
                  "caps-lock=, registry= or usage=, found \"colour=red\""},
        WrongLine{"keyboard usb1 product=", 15,
                  "expected vendor=, product=, manufacturer=, transport=, built-in=, location=, "
                  "caps-lock=, registry= or usage=, found \"product=\""},
        WrongLine{"keyboard usb1 registry=abc", 15,
                  "expected vendor=, product=, manufacturer=, transport=, built-in=, location=, "
                  "caps-lock=, registry= or usage=, found \"registry=abc\""},
        WrongLine{"press Q+any on usb1", 7,
                  "expected keys joined by +, such as A, F5, fn+` or left-control+Escape, found "
                  "\"Q+any\""},
        WrongLine{"press fn+ on usb1", 7,
                  "expected keys joined by +, such as A, F5, fn+` or left-control+Escape, found "
                  "\"fn+\""},
        WrongLine{"fail everything", 6,
                  "expected find-service, read-service-property, open-connection, "
                  "set-hid-parameter, read-modifier-lock-state, copy-preference, "
                  "synchronize-preferences, find-application, frontmost-application, "
                  "create-event-tap, create-run-loop-source, enable-event-tap, open-hid-manager, "
                  "registry-entry-id, read-device-property, open-url, register-login-item, "
                  "unregister-login-item, write-file, request-notification-authorization, "
                  "add-notification, create-key-event-source, copy-devices or read-log, found "
                  "\"everything\""},
        WrongLine{"fail read-log many times", 15,
                  "expected a whole number up to 1000000, found \"many\""},
        WrongLine{"defaults write key value", 20,
                  "expected a value: true, false, a number, a \"quoted text\", {} or KEY=VALUE "
                  "..., found \"value\""},
        WrongLine{"defaults write key a=1 b", 24, "expected KEY=VALUE, found \"b\""},
        WrongLine{"defaults write key a=none", 20,
                  "expected a value other than none, found \"a=none\""},
        WrongLine{"hardware Colour=1", 10,
                  "expected special, standard, HIDFKeyMode=VALUE or HIDParameters=VALUE, found "
                  "\"Colour=1\""},
        WrongLine{"setting shortcut 65536", 18,
                  "expected a whole number up to 65535, found \"65536\""},
        WrongLine{"setting shortcut 1 x", 20,
                  "expected what the key types, in quotes, found \"x\""},
        WrongLine{"expect log state \"no end", 18,
                  "expected a closing quotation mark for the text that begins here"},
        WrongLine{"expect log state \"\\x\"", 19, "expected \\\", \\\\, \\n or \\t"},
        WrongLine{"expect log state \"a\"b", 21, "expected a blank after the quoted text"},
        WrongLine{"front \xC3\x28", 7, "expected UTF-8 text, found the byte 0xC3"},
        WrongLine{"front \x1B[31m", 7, "expected UTF-8 text, found the byte 0x1B"},
        WrongLine{std::string_view{"\0", 1}, 1, "expected UTF-8 text, found the byte 0x00"}));

TEST(ScenarioParserTest, ALineMayBeAsLongAsAllowedAndNotLonger) {
  const std::string longest = "front " + std::string(maximumLineLength - 6, 'x');
  EXPECT_TRUE(parseLine(longest, 1));
  const auto tooLong = parseLine(longest + "x", 1);
  ASSERT_FALSE(tooLong);
  EXPECT_EQ(tooLong.error().column, maximumLineLength + 1);
}

TEST(ScenarioParserTest, AWordThatGoesOnAndOnIsCutInTheMessage) {
  std::string word;
  for (int count = 0; count < 100; ++count) word += "é";
  const auto step = parseLine(word, 1);
  ASSERT_FALSE(step);
  std::string shown;
  for (int count = 0; count < 30; ++count) shown += "é";
  EXPECT_EQ(step.error().message,
            "expected an action such as front or launch, or expect, found \"" + shown + "…\"");
}

TEST(ScenarioParserTest, CollectsEveryWrongLine) {
  const auto scenario = parseScenario("name", "wait soon\n\nfront none\r\nwait later\n");
  ASSERT_FALSE(scenario);
  ASSERT_EQ(scenario.error().size(), 2U);
  EXPECT_EQ(scenario.error()[0].line, 1U);
  EXPECT_EQ(scenario.error()[1].line, 4U);
}

TEST(ScenarioParserTest, RefusesAScenarioInWhichNothingHappens) {
  for (const std::string_view text : {"", "\n\n", "# only a comment\n"}) {
    const auto scenario = parseScenario("name", text);
    ASSERT_FALSE(scenario);
    ASSERT_EQ(scenario.error().size(), 1U);
    EXPECT_EQ(scenario.error()[0].message,
              "expected a scenario, found no action and no expectation");
  }
}

TEST(ScenarioParserTest, KeepsLinesCommentsAndTheirPlaces) {
  const auto scenario =
      parseScenario("name", "# Once\n\n  front none  # nobody\nexpect leaks none");
  ASSERT_TRUE(scenario);
  ASSERT_EQ(scenario->steps.size(), 3U);
  EXPECT_EQ(scenario->steps[0].kind, Step::Kind::comment);
  EXPECT_EQ(scenario->steps[0].text, "Once");
  EXPECT_EQ(scenario->steps[1].kind, Step::Kind::action);
  EXPECT_EQ(scenario->steps[1].text, "front none");
  EXPECT_EQ(scenario->steps[1].line, 3U);
  EXPECT_EQ(scenario->steps[1].column, 3U);
  EXPECT_EQ(scenario->steps[2].kind, Step::Kind::expectation);
}

}  // namespace
}  // namespace keyrow::sim
