#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <vector>

#include "platform/SystemLog.h"
#include "sim/machine/OpenHandles.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// The machine's log, of all processes. Safe to use from any thread.
class UnifiedLog {
 public:
  struct Line {
    OpenHandles::ProcessID process;
    LogEntry entry;
  };

  explicit UnifiedLog(Timeline& timeline) : timeline_{timeline} {}

  void write(Line line);

  /// Everything written so far, oldest first, or what follows the first `start` lines.
  std::vector<Line> lines(std::size_t start = 0) const;

  /// What was written at this time or later.
  std::vector<Line> linesSince(std::chrono::system_clock::time_point date) const;

  /// How many lines there are.
  std::size_t size() const;

  /// Forgets everything so far, for runs so long that it would fill the memory.
  void clear();

 private:
  Timeline& timeline_;
  /// Guards `lines_`.
  mutable std::mutex mutex_;
  std::vector<Line> lines_;
};

/// "debug", "info", "notice", "error" or "fault"; "undefined" for all else.
std::string_view logLevelName(LogLevel level);

}  // namespace keyrow::sim
