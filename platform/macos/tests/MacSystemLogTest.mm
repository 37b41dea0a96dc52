#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#import <OSLog/OSLog.h>
#include <gtest/gtest.h>
#include <os/log.h>

#include <algorithm>
#include <optional>
#include <string>
#include <thread>

#include "platform/macos/Conversions.h"
#include "platform/macos/tests/Eventually.h"

namespace keyrow::macos {
namespace {

using std::chrono::system_clock;

static_assert(static_cast<int>(LogLevel::undefined) == OSLogEntryLogLevelUndefined);
static_assert(static_cast<int>(LogLevel::debug) == OSLogEntryLogLevelDebug);
static_assert(static_cast<int>(LogLevel::info) == OSLogEntryLogLevelInfo);
static_assert(static_cast<int>(LogLevel::notice) == OSLogEntryLogLevelNotice);
static_assert(static_cast<int>(LogLevel::error) == OSLogEntryLogLevelError);
static_assert(static_cast<int>(LogLevel::fault) == OSLogEntryLogLevelFault);

constexpr auto subsystem = "app.keyrow.Keyrow.mac-tests";
constexpr auto category = "log";

/// A text that no other line has, with what a format string would take amiss.
std::string uniqueText() { return "100 %s é😀 " + utf8Text(NSUUID.UUID.UUIDString); }

class MacSystemLogTest : public ::testing::Test {
 protected:
  const std::unique_ptr<SystemLog> log = makeSystemLog();
  const std::unique_ptr<Logger> logger = log->makeLogger(subsystem, category);
  const system_clock::time_point start = system_clock::now() - std::chrono::seconds{1};

  /// The line with this text, which may take a moment to arrive.
  std::optional<LogEntry> find(const std::string& text, system_clock::time_point since) {
    std::optional<LogEntry> line;
    eventually([&] {
      const auto entries = log->entriesSince(since);
      EXPECT_TRUE(entries) << errorText(entries.error());
      if (!entries) return true;
      const auto found = std::ranges::find(*entries, text, &LogEntry::message);
      if (found != entries->end()) line = *found;
      return line.has_value();
    });
    return line;
  }
};

struct Level {
  std::string name;
  void (Logger::*write)(std::string_view message);
  LogLevel level;
  os_log_type_t type;
};

class MacSystemLogLevelTest : public MacSystemLogTest,
                              public ::testing::WithParamInterface<Level> {};

TEST_P(MacSystemLogLevelTest, GivesBackWhatWasWritten) {
  const auto& [name, write, level, type] = GetParam();
  if (!os_log_type_enabled(os_log_create(subsystem, category), type)) {
    GTEST_SKIP() << "This Mac is not set up to keep lines of the level " << name << ".";
  }
  const auto text = uniqueText();
  (*logger.*write)(text);
  const auto line = find(text, start);
  ASSERT_TRUE(line) << "There is no such line.";
  EXPECT_EQ(line->level, level);
  EXPECT_EQ(line->subsystem, subsystem);
  EXPECT_EQ(line->category, category);
  EXPECT_GT(line->date, start);
  EXPECT_LT(line->date, system_clock::now() + std::chrono::seconds{1});
}

INSTANTIATE_TEST_SUITE_P(
    Levels, MacSystemLogLevelTest,
    ::testing::Values(Level{"debug", &Logger::debug, LogLevel::debug, OS_LOG_TYPE_DEBUG},
                      Level{"info", &Logger::info, LogLevel::info, OS_LOG_TYPE_INFO},
                      Level{"notice", &Logger::notice, LogLevel::notice, OS_LOG_TYPE_DEFAULT},
                      Level{"error", &Logger::error, LogLevel::error, OS_LOG_TYPE_ERROR}),
    [](const auto& test) { return test.param.name; });

TEST_F(MacSystemLogTest, LeavesOutWhatIsOlder) {
  const auto older = uniqueText();
  logger->error(older);
  ASSERT_TRUE(find(older, start));

  std::this_thread::sleep_for(std::chrono::seconds{1});
  const auto since = system_clock::now();
  std::this_thread::sleep_for(std::chrono::seconds{1});
  const auto newer = uniqueText();
  logger->error(newer);
  ASSERT_TRUE(find(newer, since));
  const auto entries = log->entriesSince(since);
  ASSERT_TRUE(entries);
  EXPECT_EQ(std::ranges::count(*entries, older, &LogEntry::message), 0);
}

}  // namespace
}  // namespace keyrow::macos
