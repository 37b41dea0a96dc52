#include "app/DiagnosticsLog.h"

#include <array>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using DiagnosticsLogTest = SimulatedMacTest;

TEST_F(DiagnosticsLogTest, WritesEveryCategoryAtEveryLevel) {
  std::vector<std::string> expected;
  const std::vector<std::pair<LogCategory, std::string>> categories{
      {LogCategory::app, "app"},
      {LogCategory::input, "input"},
      {LogCategory::state, "state"},
      {LogCategory::hardware, "hardware"}};
  for (const auto& [category, name] : categories) {
    auto& logger = keyrow().diagnosticsLog().logger(category);
    logger.debug("one");
    logger.info("two");
    logger.notice("three");
    logger.error("four");
    logger.write(LogLevel::fault, "five");
    for (const auto* line :
         {" debug: one", " info: two", " notice: three", " error: four", " fault: five"}) {
      expected.push_back(name + line);
    }
  }
  EXPECT_EQ(logLines(), expected);
}

TEST_F(DiagnosticsLogTest, HasOneLoggerPerCategory) {
  auto& log = keyrow().diagnosticsLog();
  EXPECT_EQ(&log.logger(LogCategory::app), &log.logger(LogCategory::app));
  EXPECT_NE(&log.logger(LogCategory::app), &log.logger(LogCategory::input));
}

/// The subsystem that a process of that bundle writes under.
std::string subsystemOf(SimulatedMac& mac, const std::optional<std::string>& bundleIdentifier) {
  SimulatedProcess process{mac, 600, bundleIdentifier};
  process.keyrow().diagnosticsLog().logger(LogCategory::app).info("Here.");
  return mac.log.lines().back().entry.subsystem;
}

TEST_F(DiagnosticsLogTest, WritesUnderTheIdentifierOfItsBundle) {
  EXPECT_EQ(subsystemOf(mac, "com.example.Keyrow.beta"), "com.example.Keyrow.beta");
}

TEST_F(DiagnosticsLogTest, WritesUnderTheFixedIdentifierWhenTheBundleHasNone) {
  EXPECT_EQ(subsystemOf(mac, std::nullopt), appIdentifier);
}

TEST_F(DiagnosticsLogTest, ReportsWhatItWroteWithoutABundleIdentifier) {
  SimulatedProcess unbundled{mac, 600, std::nullopt};
  unbundled.keyrow().diagnosticsLog().logger(LogCategory::app).info("Here.");
  EXPECT_EQ(unbundled.keyrow().diagnosticsLog().recentLogReport(),
            "[2024-03-01T08:00:00.000Z] [INFO] [app] Here.");
}

TEST(ErrorTextTest, TakesTheDescriptionThatTheErrorBrings) {
  EXPECT_EQ(errorText(SystemError{"The log is locked.", "OSLogErrorDomain", 4}),
            "The log is locked.");
}

TEST(ErrorTextTest, TakesDomainAndCodeWithoutADescription) {
  EXPECT_EQ(errorText(SystemError{std::nullopt, "NSOSStatusErrorDomain", -50}),
            "NSOSStatusErrorDomain (-50)");
  EXPECT_EQ(errorText(SystemError{std::nullopt, "NSCocoaErrorDomain", 260}),
            "NSCocoaErrorDomain (260)");
  EXPECT_EQ(errorText(SystemError{std::nullopt, "Domain", 0}), "Domain (0)");
  EXPECT_EQ(errorText(SystemError{std::nullopt, "", std::numeric_limits<std::int64_t>::min()}),
            " (-9223372036854775808)");
}

TEST(ErrorTextTest, AnEmptyDescriptionIsNone) {
  EXPECT_EQ(errorText(SystemError{"", "NSOSStatusErrorDomain", -50}),
            "NSOSStatusErrorDomain (-50)");
}

TEST(ErrorTextTest, ABlankDescriptionIsStillOne) {
  EXPECT_EQ(errorText(SystemError{" ", "NSOSStatusErrorDomain", -50}), " ");
}

}  // namespace
}  // namespace keyrow::sim
