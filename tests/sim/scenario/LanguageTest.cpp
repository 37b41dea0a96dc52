#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <regex>

#include "sim/machine/PortCall.h"
#include "sim/scenario/Help.h"
#include "sim/scenario/Language.h"
#include "sim/scenario/ScenarioParser.h"

namespace keyrow::sim {
namespace {

/// A line of the language, as far as it is written down.
struct Described {
  std::string beginning;
  std::string usage;
  std::string example;
};

std::vector<Described> wholeLanguage() {
  std::vector<Described> lines;
  for (const auto& part : language()) {
    for (const auto& word : part.actions) {
      lines.push_back(
          {std::string{word.words}, std::string{word.usage}, std::string{word.example}});
    }
    for (const auto& word : part.expectations) {
      lines.push_back({"expect " + std::string{word.words}, std::string{word.usage},
                       std::string{word.example}});
    }
  }
  return lines;
}

std::string documentation() {
  std::ifstream file{KEYROW_SOURCE_DIR "/docs/scenarios.md"};
  const std::string text{std::istreambuf_iterator<char>{file}, {}};
  // In a Markdown table a bar has to be escaped.
  return std::regex_replace(text, std::regex{R"(\\\|)"}, "|");
}

TEST(LanguageTest, EveryLineHasAnExampleThatParses) {
  for (const auto& line : wholeLanguage()) {
    const auto step = parseLine(line.example, 1);
    EXPECT_TRUE(step) << line.example << ": " << (step ? "" : step.error().message);
    EXPECT_TRUE(line.example.starts_with(line.beginning)) << line.example;
  }
}

TEST(LanguageTest, NoBackDoorsAreLeft) {
  for (const auto* line :
       {"set global special", "toggle override", "clear override", "setting shortcut default"}) {
    EXPECT_FALSE(parseLine(line, 1)) << line;
  }
}

TEST(LanguageTest, TheDocumentationHasEveryLineWithItsExample) {
  const auto documented = documentation();
  for (const auto& line : wholeLanguage()) {
    EXPECT_NE(documented.find("`" + line.usage + "`"), std::string::npos) << line.usage;
    EXPECT_NE(documented.find(line.example), std::string::npos) << line.example;
  }
  for (const auto& form : eventForms) {
    EXPECT_NE(documented.find("`" + std::string{form.usage} + "`"), std::string::npos)
        << form.usage;
  }
}

TEST(LanguageTest, TheDocumentationHasEveryPlaceholderAndEveryWordOfThePrompt) {
  const auto documented = documentation();
  for (const auto& entry : placeholders) {
    EXPECT_NE(documented.find("| `" + std::string{entry.usage} + "` | "), std::string::npos)
        << entry.usage;
  }
  for (const auto& entry : promptWords) {
    EXPECT_NE(documented.find(entry.usage), std::string::npos) << entry.usage;
  }
}

TEST(LanguageTest, TheDocumentationHasEveryCallThatCanFail) {
  const auto documented = documentation();
  for (const auto& call : portCalls) {
    const auto row = "| `" + std::string{call.name} + "` | " + std::string{call.failure} + " |";
    EXPECT_NE(documented.find(row), std::string::npos) << row;
  }
}

/// What can be expected, in the order of the language.
#define EXPECTATIONS                                                                              \
  "hardware, preference, defaults, override, global, scope, key, tap, source, shortcut, status, " \
  "menu, window, screen, voice, pane, process, leaks, log, report, fault, calls, draft, "         \
  "attachment, "                                                                                  \
  "notification, output, exit-status"

#define VALUES \
  "a value: true, false, a number, a \"quoted text\", {}, or KEY=VALUE ... without braces"

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
        WrongLine{"  front", 8,
                  "expected a bundle identifier, such as com.apple.TextEdit, found the end of the "
                  "line"},
        WrongLine{"front a b", 9, "expected the end of the line, found \"b\""},
        WrongLine{"expect everything", 8, "expected one of " EXPECTATIONS ", found \"everything\""},
        WrongLine{"expect", 7, "expected one of " EXPECTATIONS ", found the end of the line"},
        WrongLine{"expect no global", 17,
                  "expected special, standard or none, found the end of the line"},
        WrongLine{"expect no global special", 18,
                  "expected something that happens, such as: hardware special -> standard, found "
                  "\"special\""},
        WrongLine{"expect hardware special -> on", 28,
                  "expected special, standard or unreadable, found \"on\""},
        WrongLine{"expect key \"A\" 2", 17, "expected \"times\", found the end of the line"},
        WrongLine{"expect log then global none", 24,
                  "expected something that happens, such as: hardware special -> standard, found "
                  "\"none\""},
        WrongLine{"expect hardware 1", 17, "expected special, standard or unreadable, found \"1\""},
        WrongLine{
            "wait soon", 6,
            "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min, 1h or 2d, found "
            "\"soon\""},
        WrongLine{
            "wait -1s", 6,
            "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min, 1h or 2d, found "
            "\"-1s\""},
        WrongLine{
            "wait 1001h", 6,
            "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min, 1h or 2d, found "
            "\"1001h\""},
        WrongLine{
            "wait 1.2.3s", 6,
            "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min, 1h or 2d, found "
            "\"1.2.3s\""},
        WrongLine{
            "wait s", 6,
            "expected a duration of at most 1000h, such as 350ms, 0.35s, 5min, 1h or 2d, found "
            "\"s\""},
        WrongLine{"expect source usb1 at 10ms", 23,
                  "expected a signed duration, such as +10ms or -0.2s, found \"10ms\""},
        WrongLine{"launch missiles", 8, "expected \"keyrow\", found \"missiles\""},
        WrongLine{"keyboard é colour=red", 12,
                  "expected vendor=, product-id=, product=, manufacturer=, transport=, built-in=, "
                  "location=, caps-lock=, registry=, usage= or exclusive=, found \"colour=red\""},
        WrongLine{"keyboard usb1 product=", 15,
                  "expected vendor=, product-id=, product=, manufacturer=, transport=, built-in=, "
                  "location=, caps-lock=, registry=, usage= or exclusive=, found \"product=\""},
        WrongLine{"keyboard usb1 registry=abc", 15,
                  "expected vendor=, product-id=, product=, manufacturer=, transport=, built-in=, "
                  "location=, caps-lock=, registry=, usage= or exclusive=, found \"registry=abc\""},
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
                  "add-notification, create-key-event-source, copy-devices, read-log, "
                  "write-defaults or write-output, "
                  "found "
                  "\"everything\""},
        WrongLine{"fail read-log many times", 15,
                  "expected always, N times or after N, found \"many\""},
        WrongLine{
            "defaults write globalFnStat 1", 16,
            "expected globalFnState, localFnState, keyboardFnStates, lastSeenFnStatePreference, "
            "fnReplacementModifier, "
            "localToggleShortcutKeyCode, localToggleShortcutDisplayName, "
            "localToggleShortcutMenuKeyEquivalent, hasPromptedAccessibility, "
            "SUEnableAutomaticChecks, showCapsLockIndicator, "
            "applyFnModeToExternalFunctionKeys or enhancedDiagnosticsEnabled, found "
            "\"globalFnStat\""},
        WrongLine{"defaults write globalFnState value", 30, "expected " VALUES ", found \"value\""},
        WrongLine{"defaults write localFnState {com.apple.TextEdit=1}", 29,
                  "expected " VALUES ", found \"{com.apple.TextEdit=1}\""},
        WrongLine{"defaults write localFnState a={b=1}", 29,
                  "expected KEY= with a value: true, false, a number, a \"quoted text\" or {}, "
                  "found \"a={b=1}\""},
        WrongLine{"defaults write localFnState a=special", 29,
                  "expected KEY= with a value: true, false, a number, a \"quoted text\" or {}, "
                  "found \"a=special\""},
        WrongLine{"defaults write localFnState a=1 b", 33,
                  "expected the end of the line, found \"b\""},
        WrongLine{"defaults add localFnState a=1", 27,
                  "expected APP=MODE, such as com.apple.TextEdit=special or "
                  "com.apple.TextEdit=standard, found \"a=1\""},
        WrongLine{"defaults add globalFnState a=special", 14,
                  "expected \"localFnState\", found \"globalFnState\""},
        WrongLine{"install \"a b\"", 9,
                  "expected a bundle identifier, such as com.apple.TextEdit, found \"a b\""},
        WrongLine{"press caps-lock on usb1", 7,
                  "expected keys other than Caps Lock, for which there is caps-lock on|off, found "
                  "\"caps-lock\""},
        WrongLine{"defaults write localFnState a=1 a=0", 33,
                  "expected another key, as this one is there already, found \"a=0\""},
        WrongLine{"defaults write localFnState a{=1", 29, "expected " VALUES ", found \"a{=1\""},
        WrongLine{"defaults write globalFnState 1e999", 30, "expected " VALUES ", found \"1e999\""},
        WrongLine{
            "hardware HIDFKeyMode=ture", 10,
            "expected KEY= with a value: true, false, a number, a \"quoted text\", {} or none, "
            "found \"HIDFKeyMode=ture\""},
        WrongLine{"keyboard k built-in=yes", 12,
                  "expected a number, true or false, or a text in quotation marks, found "
                  "\"built-in=yes\""},
        WrongLine{"keyboard none", 10,
                  "expected a name for the keyboard other than none, found \"none\""},
        WrongLine{"fail read-log 0 times", 17, "expected at least 1 time, found \"times\""},
        WrongLine{"install none", 9,
                  "expected a bundle identifier, such as com.apple.TextEdit, found \"none\""},
        WrongLine{"flags-changed A+B", 15, "expected a single key, found \"A+B\""},
        WrongLine{"flags-changed A with B", 22,
                  "expected modifiers joined by +, such as fn+shift, found \"B\""},
        WrongLine{"info SUFeedUrl none", 6,
                  "expected CFBundleShortVersionString, CFBundleVersion, SUFeedURL or "
                  "SUEnableAutomaticChecks, found "
                  "\"SUFeedUrl\""},
        WrongLine{"quit keyrow now", 13, "expected the end of the line, found \"now\""},
        WrongLine{"hardware Colour=1", 10,
                  "expected special, standard, HIDFKeyMode=VALUE or HIDParameters=VALUE, found "
                  "\"Colour=1\""},
        WrongLine{"expect log state \"no end", 18,
                  "expected a closing quotation mark for the text that begins here"},
        WrongLine{"expect log state \"\\x\"", 19,
                  "expected \\\", \\\\, \\n, \\t or a character such as \\u{1B}"},
        WrongLine{"expect log state \"a\"b", 21, "expected a blank after the quoted text"},
        WrongLine{"front \xC3\x28", 7, "expected UTF-8 text, found the byte 0xC3"},
        WrongLine{"front \x1B[31m", 7, "expected text, found the control character U+001B"},
        WrongLine{std::string_view{"\0", 1}, 1,
                  "expected text, found the control character U+0000"}));

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
  EXPECT_TRUE(scenario->steps[0].isComment());
  EXPECT_EQ(scenario->steps[0].text, "Once");
  ASSERT_TRUE(scenario->steps[1].action());
  const auto* front = std::get_if<Front>(scenario->steps[1].action());
  EXPECT_TRUE(front && !front->app && !front->isUnnamed);
  EXPECT_EQ(scenario->steps[1].text, "front none");
  EXPECT_EQ(scenario->steps[1].line, 3U);
  EXPECT_EQ(scenario->steps[1].column, 3U);
  EXPECT_TRUE(scenario->steps[2].isExpectation());
}

}  // namespace
}  // namespace keyrow::sim
