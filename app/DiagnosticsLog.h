#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/SystemError.h"
#include "platform/SystemLog.h"
#include "platform/Text.h"

namespace keyrow {

/// What a log line is about.
enum class LogCategory {
  /// Application lifecycle and instance takeover.
  app,
  /// Key events, shortcuts and function-row translation.
  input,
  /// Reads, writes, overrides and mirroring of the function-key mode.
  state,
  /// HID devices: keyboard sources and Caps Lock.
  hardware,
};

/// The application's log: writes into the system's unified log under one subsystem and
/// four categories, and reads the application's recent lines back.
class DiagnosticsLog {
 public:
  struct Uses {
    SystemLog& systemLog;
    Bundle& bundle;
    Clock& clock;
    Text& text;
  };

  explicit DiagnosticsLog(const Uses& uses);

  Logger& logger(LogCategory category) { return *loggers_[static_cast<std::size_t>(category)]; }

  /// The application's lines of the last 15 minutes, oldest first, at most the 80 most
  /// recent and at most their last 6000 characters. When there are none, or the log
  /// cannot be read, the text says so.
  std::string recentLogReport();

 private:
  bool isOurs(const LogEntry& entry) const;

  const Uses use_;
  /// The bundle's identifier, or else `appIdentifier`.
  const std::string subsystem_;
  std::array<std::unique_ptr<Logger>, 4> loggers_;
};

}  // namespace keyrow
