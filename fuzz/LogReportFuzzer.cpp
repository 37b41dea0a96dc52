#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/Require.h"
#include "fuzz/Utf8.h"
#include "platform/Iso8601.h"
#include "platform/Platform.h"
#include "sim/machine/SimulatedMac.h"
#include "sim/ports/SimulatedProcess.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;
using fuzz::require;

constexpr OpenHandles::ProcessID processID = 501;
constexpr std::size_t maximumLines = 80;
constexpr std::size_t maximumCharacters = 6000;
constexpr std::string_view header = "[Truncated to the most recent 6000 characters]\n";
constexpr std::array<std::string_view, 4> categories{"app", "input", "state", "hardware"};

std::string repeated(std::string_view text, int count) {
  // What goes into one log line is bounded on a Mac, too.
  constexpr std::size_t longest = 8'000;
  std::string result;
  for (; count > 0 && result.size() < longest; --count) result += text;
  return result;
}

/// A log of arbitrary lines, and what has to be in the report about it.
class LogReport {
 public:
  explicit LogReport(FuzzedDataProvider& data) : data_{data} {
    mac.scheduler.advance(std::chrono::hours{data_.ConsumeIntegralInRange(0, 1000)});
    start = mac.wallClock() - 15min;
    while (data_.remaining_bytes() > 0 && writtenSize < enough) {
      const auto line = arbitraryLine();
      for (auto count = data_.ConsumeIntegralInRange(1, 100); count > 0; --count) write(line);
    }
  }

  void check() {
    const auto report = process.keyrow().diagnosticsLog().recentLogReport();
    if (wantedLines.empty()) {
      require(report == "No recent Keyrow logs were available.",
              "an empty log is said to be empty");
      return;
    }
    std::string whole;
    const auto dropped = wantedLines.size() - std::min(wantedLines.size(), maximumLines);
    for (auto index = dropped; index < wantedLines.size(); ++index) {
      if (index > dropped) whole += '\n';
      whole += wantedLines[index];
    }
    require(!fuzz::isUtf8(whole) || fuzz::isUtf8(report), "a report of UTF-8 is UTF-8");

    auto& text = process.platform().text;
    const auto characters = text.characterCount(whole);
    if (characters <= maximumCharacters) {
      require(report == whole, "a short report has all of the last lines");
      return;
    }
    require(report.starts_with(header), "a report that was cut says so");
    const auto tail = std::string_view{report}.substr(header.size());
    require(whole.ends_with(tail), "a cut takes only from the beginning");
    require(text.characterCount(tail) == maximumCharacters, "a cut leaves as much as is allowed");
    const auto cut = std::string_view{whole}.substr(0, whole.size() - tail.size());
    require(text.characterCount(cut) == characters - maximumCharacters,
            "a cut falls between two characters");
  }

 private:
  /// In bytes; more than that finds nothing that less doesn't.
  static constexpr std::size_t enough = 80'000;

  UnifiedLog::Line arbitraryLine() {
    UnifiedLog::Line line;
    // Most lines are the process's own, so that something is reported.
    line.process = oneIn(8) ? data_.ConsumeIntegral<int>() : processID;
    line.entry.date = arbitraryDate();
    line.entry.level = static_cast<LogLevel>(oneIn(4) ? data_.ConsumeIntegral<int>()
                                                      : data_.ConsumeIntegralInRange(0, 5));
    line.entry.subsystem =
        oneIn(8) ? data_.ConsumeRandomLengthString(32) : std::string{appIdentifier};
    line.entry.category = oneIn(8) ? data_.ConsumeRandomLengthString(12)
                                   : std::string{data_.PickValueInArray(categories)};
    line.entry.message = data_.ConsumeRandomLengthString(40);
    const auto unit = data_.ConsumeRandomLengthString(24);
    line.entry.message += repeated(unit, data_.ConsumeIntegralInRange(0, 7000));
    line.entry.message += data_.ConsumeRandomLengthString(40);
    return line;
  }

  std::chrono::system_clock::time_point arbitraryDate() {
    using std::chrono::nanoseconds;
    using Date = std::chrono::system_clock::time_point;
    // On a Mac the clock counts microseconds.
    const auto duration = [](nanoseconds::rep count) {
      return std::chrono::duration_cast<Date::duration>(nanoseconds{count});
    };
    // Around the beginning of what is reported; else any date of some centuries.
    if (oneIn(8)) return Date{duration(data_.ConsumeIntegral<nanoseconds::rep>())};
    return start + duration(data_.ConsumeIntegralInRange<nanoseconds::rep>(
                       -1'000'000, nanoseconds{20min}.count()));
  }

  void write(const UnifiedLog::Line& line) {
    if (writtenSize >= enough) return;
    writtenSize += line.entry.message.size();
    const auto& entry = line.entry;
    const bool isWanted = line.process == processID && entry.date >= start &&
                          entry.subsystem == appIdentifier &&
                          std::ranges::find(categories, entry.category) != categories.end();
    if (isWanted) wantedLines.push_back(reportLine(entry));
    mac.log.write(line);
  }

  static std::string reportLine(const LogEntry& entry) {
    constexpr std::array<std::string_view, 6> levels{"DEFAULT", "DEBUG", "INFO",
                                                     "NOTICE",  "ERROR", "FAULT"};
    const auto level = static_cast<int>(entry.level);
    const bool isKnown = level >= 0 && level < static_cast<int>(levels.size());
    return "[" + iso8601Text(entry.date) + "] [" +
           std::string{levels[isKnown ? static_cast<std::size_t>(level) : 0]} + "] [" +
           entry.category + "] " + entry.message;
  }

  bool oneIn(int count) { return data_.ConsumeIntegralInRange(1, count) == count; }

  FuzzedDataProvider& data_;
  SimulatedMac mac;
  SimulatedProcess process{mac, processID};
  /// Lines are reported from here on.
  std::chrono::system_clock::time_point start;
  std::vector<std::string> wantedLines;
  std::size_t writtenSize = 0;
};

}  // namespace
}  // namespace keyrow::sim

/// Whatever was logged, the report about it keeps to its limits and splits no character.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data{bytes, size};
  keyrow::sim::LogReport{data}.check();
  return 0;
}
