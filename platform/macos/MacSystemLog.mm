#import <Foundation/Foundation.h>
#import <OSLog/OSLog.h>
#include <os/log.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <expected>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

/// By the numbers of `LogLevel`.
constexpr std::array<os_log_type_t, 6> logTypes{OS_LOG_TYPE_DEFAULT, OS_LOG_TYPE_DEBUG,
                                                OS_LOG_TYPE_INFO,    OS_LOG_TYPE_DEFAULT,
                                                OS_LOG_TYPE_ERROR,   OS_LOG_TYPE_FAULT};

class MacLogger final : public Logger {
 public:
  MacLogger(const std::string& subsystem, const std::string& category)
      : log_{os_log_create(subsystem.c_str(), category.c_str())} {}

  void write(LogLevel level, std::string_view message) override {
    os_log_with_type(log_, logTypes[static_cast<std::size_t>(level)], "%{public}.*s",
                     static_cast<int>(message.size()), message.data());
  }

 private:
  const os_log_t log_;
};

using Seconds = std::chrono::duration<double>;

NSDate* nsDate(std::chrono::system_clock::time_point date) {
  return [NSDate dateWithTimeIntervalSince1970:Seconds{date.time_since_epoch()}.count()];
}

std::chrono::system_clock::time_point timePoint(NSDate* date) {
  return std::chrono::system_clock::time_point{
      std::chrono::round<std::chrono::system_clock::duration>(Seconds{date.timeIntervalSince1970})};
}

LogEntry logEntry(OSLogEntryLog* entry) {
  return {.date = timePoint(entry.date),
          .level = static_cast<LogLevel>(entry.level),
          .subsystem = utf8Text(entry.subsystem),
          .category = utf8Text(entry.category),
          .message = utf8Text(entry.composedMessage)};
}

std::unexpected<SystemError> failure(NSError* error) {
  return std::unexpected{SystemError{
      .errorDescription = std::nullopt, .domain = utf8Text(error.domain), .code = error.code}};
}

class MacSystemLog final : public SystemLog {
 public:
  std::unique_ptr<Logger> makeLogger(std::string_view subsystem,
                                     std::string_view category) override {
    return std::make_unique<MacLogger>(std::string{subsystem}, std::string{category});
  }

  std::expected<std::vector<LogEntry>, SystemError> entriesSince(
      std::chrono::system_clock::time_point date) override {
    NSError* error = nil;
    OSLogStore* const store = [OSLogStore storeWithScope:OSLogStoreCurrentProcessIdentifier
                                                   error:&error];
    if (!store) return failure(error);

    NSEnumerator<OSLogEntry*>* const entries =
        [store entriesEnumeratorWithOptions:0
                                   position:[store positionWithDate:nsDate(date)]
                                  predicate:nil
                                      error:&error];
    if (!entries) return failure(error);

    std::vector<LogEntry> lines;
    for (OSLogEntry* entry in entries) {
      @autoreleasepool {
        // The position is only a hint to some versions of macOS.
        const bool isOlder = timePoint(entry.date) < date;
        if (isOlder || ![entry isKindOfClass:OSLogEntryLog.class]) continue;
        lines.push_back(logEntry((OSLogEntryLog*)entry));
      }
    }
    return lines;
  }
};

}  // namespace

std::unique_ptr<SystemLog> makeSystemLog() { return std::make_unique<MacSystemLog>(); }

}  // namespace keyrow::macos
