#include "app/DiagnosticsLog.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <vector>

#include "core/AppIdentifier.h"
#include "platform/Iso8601.h"

namespace keyrow {

namespace {

using namespace std::chrono_literals;

/// By the numbers of `LogCategory`.
constexpr std::array<std::string_view, 4> categoryNames{"app", "input", "state", "hardware"};

/// By the numbers of `LogLevel`.
constexpr std::array<std::string_view, 6> levelNames{"DEFAULT", "DEBUG", "INFO",
                                                     "NOTICE",  "ERROR", "FAULT"};

constexpr auto reportWindow = 900s;
constexpr std::size_t maximumReportLines = 80;
constexpr std::size_t maximumReportCharacters = 6000;

std::string_view levelName(LogLevel level) {
  const auto index = static_cast<std::size_t>(level);
  return levelNames[index < levelNames.size() ? index : 0];
}

std::string reportLine(const LogEntry& entry) {
  return "[" + iso8601Text(entry.date) + "] [" + std::string{levelName(entry.level)} + "] [" +
         entry.category + "] " + entry.message;
}

}  // namespace

DiagnosticsLog::DiagnosticsLog(const Uses& uses)
    : use_{uses}, subsystem_{uses.bundle.identifier().value_or(std::string{appIdentifier})} {
  std::ranges::transform(categoryNames, loggers_.begin(), [this](std::string_view category) {
    return use_.systemLog.makeLogger(subsystem_, category);
  });
}

std::string DiagnosticsLog::recentLogReport() {
  auto entries = use_.systemLog.entriesSince(use_.clock.now() - reportWindow);
  if (!entries) return "Recent logs could not be loaded: " + errorText(entries.error());

  std::erase_if(*entries, [this](const LogEntry& entry) { return !isOurs(entry); });
  if (entries->empty()) return "No recent Keyrow logs were available.";

  const auto dropped = entries->size() - std::min(entries->size(), maximumReportLines);
  std::string report;
  for (auto index = dropped; index < entries->size(); ++index) {
    if (index > dropped) report += '\n';
    report += reportLine((*entries)[index]);
  }
  auto tail = use_.text.lastCharacters(report, maximumReportCharacters);
  if (tail.size() == report.size()) return report;
  return "[Truncated to the most recent " + std::to_string(maximumReportCharacters) +
         " characters]\n" + tail;
}

bool DiagnosticsLog::isOurs(const LogEntry& entry) const {
  return entry.subsystem == subsystem_ &&
         std::ranges::find(categoryNames, entry.category) != categoryNames.end();
}

}  // namespace keyrow
