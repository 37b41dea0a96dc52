#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "app/DiagnosticsLog.h"
#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;

constexpr std::string_view noLines = "No recent Keyrow logs were available.";
constexpr std::string_view truncationHeader = "[Truncated to the most recent 6000 characters]\n";

/// At noon after the machine was switched on at 8.
class DiagnosticsLogReportTest : public SimulatedMacTest {
 protected:
  static constexpr std::chrono::system_clock::time_point noon{
      std::chrono::sys_days{std::chrono::year{2024} / 3 / 1} + 12h};
  /// What stands before the message of a line that was logged at noon, in "app" at info.
  static constexpr std::string_view noonPrefix = "[2024-03-01T12:00:00.000Z] [INFO] [app] ";

  void SetUp() override { mac.scheduler.advance(4h); }

  std::string report() { return keyrow().diagnosticsLog().recentLogReport(); }

  /// A line of the process at noon, in "app" at info, as far as `change` leaves it so.
  void write(
      std::string message, const std::function<void(UnifiedLog::Line&)>& change = [](auto&) {}) {
    UnifiedLog::Line line{
        501, {noon, LogLevel::info, std::string{appIdentifier}, "app", std::move(message)}};
    change(line);
    mac.log.write(std::move(line));
  }

  void writeAt(std::chrono::system_clock::time_point date, std::string message) {
    write(std::move(message), [date](auto& line) { line.entry.date = date; });
  }
};

std::string repeated(std::string_view text, std::size_t count) {
  std::string result;
  for (; count > 0; --count) result += text;
  return result;
}

TEST_F(DiagnosticsLogReportTest, SaysThatThereAreNoLines) { EXPECT_EQ(report(), noLines); }

TEST_F(DiagnosticsLogReportTest, ReportsLinesOldestFirstWithoutATrailingNewline) {
  auto& log = keyrow().diagnosticsLog();
  log.logger(LogCategory::app).debug("First.");
  mac.scheduler.advance(1'500ms);
  log.logger(LogCategory::state).notice("Second.");
  log.logger(LogCategory::input).error("Third.");
  log.logger(LogCategory::hardware).info("");
  EXPECT_EQ(report(),
            "[2024-03-01T12:00:00.000Z] [DEBUG] [app] First.\n"
            "[2024-03-01T12:00:01.500Z] [NOTICE] [state] Second.\n"
            "[2024-03-01T12:00:01.500Z] [ERROR] [input] Third.\n"
            "[2024-03-01T12:00:01.500Z] [INFO] [hardware] ");
}

TEST_F(DiagnosticsLogReportTest, NamesEveryLevelAndCallsAllElseDefault) {
  const std::vector<std::pair<LogLevel, std::string>> names{{LogLevel::debug, "DEBUG"},
                                                            {LogLevel::info, "INFO"},
                                                            {LogLevel::notice, "NOTICE"},
                                                            {LogLevel::error, "ERROR"},
                                                            {LogLevel::fault, "FAULT"},
                                                            {LogLevel::undefined, "DEFAULT"},
                                                            {static_cast<LogLevel>(6), "DEFAULT"},
                                                            {static_cast<LogLevel>(-1), "DEFAULT"}};
  std::string expected;
  for (const auto& [level, name] : names) {
    write("Line.", [&](auto& line) { line.entry.level = level; });
    if (!expected.empty()) expected += '\n';
    expected += "[2024-03-01T12:00:00.000Z] [" + name + "] [app] Line.";
  }
  EXPECT_EQ(report(), expected);
}

TEST_F(DiagnosticsLogReportTest, LeavesOutLinesOfOtherSubsystems) {
  for (const std::string subsystem : {"", "com.apple.AppKit", "app.keyrow.Keyrow.helper",
                                      "app.keyrow.Keyro", "APP.KEYROW.KEYROW"}) {
    write("Foreign.", [&](auto& line) { line.entry.subsystem = subsystem; });
  }
  EXPECT_EQ(report(), noLines);
  write("Ours.");
  EXPECT_EQ(report(), std::string{noonPrefix} + "Ours.");
}

TEST_F(DiagnosticsLogReportTest, LeavesOutLinesOfOtherCategories) {
  for (const std::string category : {"", "App", "apps", "ap", "default", "Sparkle"}) {
    write("Foreign.", [&](auto& line) { line.entry.category = category; });
  }
  EXPECT_EQ(report(), noLines);
}

TEST_F(DiagnosticsLogReportTest, LeavesOutLinesOfOtherProcesses) {
  write("Of another instance.", [](auto& line) { line.process = 502; });
  EXPECT_EQ(report(), noLines);
}

TEST_F(DiagnosticsLogReportTest, ReachesBack15Minutes) {
  writeAt(noon - 15min - 1us, "Too old.");
  EXPECT_EQ(report(), noLines);
  writeAt(noon - 15min, "Just in time.");
  writeAt(noon - 15min + 1us, "In time.");
  EXPECT_EQ(report(),
            "[2024-03-01T11:45:00.000Z] [INFO] [app] Just in time.\n"
            "[2024-03-01T11:45:00.000Z] [INFO] [app] In time.");
}

TEST_F(DiagnosticsLogReportTest, KnowsEveryRecentLineThoughTheClockWasSetBack) {
  writeAt(noon - 1h, "Old.");
  writeAt(noon + 1min, "First.");
  writeAt(noon - 1h, "Older.");
  writeAt(noon, "Second.");
  EXPECT_EQ(report(), "[2024-03-01T12:01:00.000Z] [INFO] [app] First.\n" + std::string{noonPrefix} +
                          "Second.");
}

TEST_F(DiagnosticsLogReportTest, LinesGrowOldAsTimePasses) {
  write("Line.");
  mac.scheduler.advance(15min);
  EXPECT_EQ(report(), std::string{noonPrefix} + "Line.");
  mac.scheduler.advance(1us);
  EXPECT_EQ(report(), noLines);
}

/// The lines with these numbers, as the report has them.
std::string numberedLines(std::string_view prefix, int first, int last) {
  std::string result;
  for (int number = first; number <= last; ++number) {
    if (number > first) result += '\n';
    result += std::string{prefix} + std::to_string(number);
  }
  return result;
}

TEST_F(DiagnosticsLogReportTest, Reports80LinesInFull) {
  for (int number = 1; number <= 80; ++number) write(std::to_string(number));
  EXPECT_EQ(report(), numberedLines(noonPrefix, 1, 80));
}

TEST_F(DiagnosticsLogReportTest, ReportsThe80MostRecentOf81And100Lines) {
  for (int number = 1; number <= 81; ++number) write(std::to_string(number));
  EXPECT_EQ(report(), numberedLines(noonPrefix, 2, 81));
  for (int number = 82; number <= 100; ++number) write(std::to_string(number));
  EXPECT_EQ(report(), numberedLines(noonPrefix, 21, 100));
}

TEST_F(DiagnosticsLogReportTest, ForeignLinesDoNotCountAmongThe80) {
  for (int number = 1; number <= 80; ++number) {
    write(std::to_string(number));
    write("Foreign.", [](auto& line) { line.entry.category = "Sparkle"; });
  }
  EXPECT_EQ(report(), numberedLines(noonPrefix, 1, 80));
}

TEST_F(DiagnosticsLogReportTest, ReportsExactly6000CharactersUnchanged) {
  const std::string message(6'000 - noonPrefix.size(), 'x');
  write(message);
  EXPECT_EQ(report(), std::string{noonPrefix} + message);
}

TEST_F(DiagnosticsLogReportTest, CutsTheFirstOf6001Characters) {
  const std::string message(6'001 - noonPrefix.size(), 'x');
  write(message);
  EXPECT_EQ(report(), std::string{truncationHeader} + std::string{noonPrefix.substr(1)} + message);
}

TEST_F(DiagnosticsLogReportTest, TheNewlinesBetweenLinesCountToo) {
  const std::string first(3'000 - noonPrefix.size(), 'x');
  const std::string second(2'999 - noonPrefix.size(), 'y');
  const std::string prefix{noonPrefix};
  write(first);
  write(second);
  EXPECT_EQ(report(), prefix + first + '\n' + prefix + second);
  write("");
  EXPECT_EQ(
      report(),
      std::string{truncationHeader} +
          (prefix + first + '\n' + prefix + second + '\n' + prefix).substr(noonPrefix.size() + 1));
}

TEST_F(DiagnosticsLogReportTest, CutsAfterDroppingAllBut80Lines) {
  // Together the last 80 lines have 6000 characters: 79 newlines and 5921 in the lines.
  write(std::string(1'000, 'x'));
  std::string expected;
  for (int number = 1; number <= 80; ++number) {
    const std::string message(
        number == 80 ? 5'921 - 79 * 74 - noonPrefix.size() : 74 - noonPrefix.size(), 'y');
    write(message);
    if (number > 1) expected += '\n';
    expected += std::string{noonPrefix} + message;
  }
  EXPECT_EQ(expected.size(), 6'000U);
  EXPECT_EQ(report(), expected);
}

/// What a reader sees as one character, of several scalars or bytes.
class WideCharacterTest
    : public DiagnosticsLogReportTest,
      public ::testing::WithParamInterface<std::pair<std::string, std::string>> {
 protected:
  const std::string character = GetParam().second;
};

TEST_P(WideCharacterTest, CountsAsOne) {
  const auto message = repeated(character, 6'000 - noonPrefix.size());
  write(message);
  EXPECT_EQ(report(), std::string{noonPrefix} + message);
}

TEST_P(WideCharacterTest, IsNeverSplit) {
  write(repeated(character, 6'001));
  EXPECT_EQ(report(), std::string{truncationHeader} + repeated(character, 6'000));
}

TEST_P(WideCharacterTest, IsKeptWholeWhereTheCutFallsBeforeIt) {
  write("x" + repeated(character, 2) + std::string(5'998, 'y'));
  EXPECT_EQ(report(),
            std::string{truncationHeader} + repeated(character, 2) + std::string(5'998, 'y'));
}

INSTANTIATE_TEST_SUITE_P(Characters, WideCharacterTest,
                         ::testing::ValuesIn(std::vector<std::pair<std::string, std::string>>{
                             {"TwoBytes", "é"},
                             {"CombiningMark", "e\u0301"},
                             {"SeveralMarks", "o\u0323\u0302\u0301"},
                             {"Emoji", "😀"},
                             {"EmojiOfSkinTone", "👍🏽"},
                             {"FamilyJoinedByZeroWidthJoiners", "👨‍👩‍👧‍👦"},
                             {"Flag", "🇩🇪"},
                             {"Keycap", "1\uFE0F\u20E3"},
                             {"HangulOfConjoiningLetters", "\u1112\u1161\u11AB"},
                             {"CarriageReturnAndLineFeed", "\r\n"},
                         }),
                         [](const auto& test) { return test.param.first; });

/// A log store that answers with an error.
class FailingSystemLog final : public SystemLog {
 public:
  explicit FailingSystemLog(SystemError error) : error_{std::move(error)} {}

  std::unique_ptr<Logger> makeLogger(std::string_view, std::string_view) override {
    return nullptr;
  }
  std::expected<std::vector<LogEntry>, SystemError> entriesSince(
      std::chrono::system_clock::time_point) override {
    return std::unexpected{error_};
  }

 private:
  const SystemError error_;
};

TEST_F(DiagnosticsLogReportTest, SaysWhyTheLogCannotBeRead) {
  const auto reportOf = [this](SystemError error) {
    const auto& platform = process->platform();
    FailingSystemLog systemLog{std::move(error)};
    return DiagnosticsLog{{.systemLog = systemLog,
                           .bundle = platform.bundle,
                           .clock = platform.clock,
                           .text = platform.text}}
        .recentLogReport();
  };
  EXPECT_EQ(reportOf({"The operation was cancelled.", "OSLogErrorDomain", 4}),
            "Recent logs could not be loaded: The operation was cancelled.");
  EXPECT_EQ(reportOf({std::nullopt, "NSOSStatusErrorDomain", -50}),
            "Recent logs could not be loaded: NSOSStatusErrorDomain (-50)");
}

TEST_F(DiagnosticsLogReportTest, AFailureLastsOnlyAsLongAsTheLogCannotBeRead) {
  write("Line.");
  mac.faults.fail(PortCall::readLog, 1);
  EXPECT_EQ(report(), "Recent logs could not be loaded: OSLogErrorDomain (-50)");
  EXPECT_EQ(report(), std::string{noonPrefix} + "Line.");
}

}  // namespace
}  // namespace keyrow::sim
