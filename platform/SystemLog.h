#pragma once

#include <chrono>
#include <expected>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Port.h"
#include "platform/SystemError.h"

namespace keyrow {

/// A level of the unified log, with the numbers of `OSLogEntryLogLevel`.
enum class LogLevel { undefined = 0, debug = 1, info = 2, notice = 3, error = 4, fault = 5 };

/// One line that was written to the unified log.
struct LogEntry {
  std::chrono::system_clock::time_point date;
  LogLevel level = LogLevel::undefined;
  std::string subsystem;
  std::string category;
  std::string message;
};

/// Writes lines of one subsystem and category (`os_log_t`). Safe to call from any
/// thread, and never fails. The whole message is public.
class Logger : public Port {
 public:
  virtual void write(LogLevel level, std::string_view message) = 0;

  void debug(std::string_view message) { write(LogLevel::debug, message); }
  void info(std::string_view message) { write(LogLevel::info, message); }
  /// The log's default level.
  void notice(std::string_view message) { write(LogLevel::notice, message); }
  void error(std::string_view message) { write(LogLevel::error, message); }
};

/// The system's unified log.
class SystemLog : public Port {
 public:
  virtual std::unique_ptr<Logger> makeLogger(std::string_view subsystem,
                                             std::string_view category) = 0;

  /// This process's log entries since a date, of every subsystem, oldest first
  /// (`OSLogStore` with the scope of the current process). Fails when the store
  /// cannot be opened or read.
  virtual std::expected<std::vector<LogEntry>, SystemError> entriesSince(
      std::chrono::system_clock::time_point date) = 0;
};

}  // namespace keyrow
