#pragma once

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

  /// Everything written so far, oldest first.
  std::vector<Line> lines() const;

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
