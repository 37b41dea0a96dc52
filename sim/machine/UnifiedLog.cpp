#include "sim/machine/UnifiedLog.h"

#include <array>
#include <utility>

namespace keyrow::sim {

std::string_view logLevelName(LogLevel level) {
  constexpr std::array<std::string_view, 6> names{"undefined", "debug", "info",
                                                  "notice",    "error", "fault"};
  const auto index = static_cast<std::size_t>(level);
  return names[index < names.size() ? index : 0];
}

void UnifiedLog::write(Line line) {
  // Held for both, so that the timeline has the lines in the same order.
  const std::scoped_lock guard{mutex_};
  const auto& entry = line.entry;
  timeline_.add(
      TimelineEvent::Kind::log,
      entry.category + (entry.level == LogLevel::error ? " error: " : ": ") + entry.message);
  lines_.push_back(std::move(line));
}

std::vector<UnifiedLog::Line> UnifiedLog::lines() const {
  const std::scoped_lock guard{mutex_};
  return lines_;
}

void UnifiedLog::clear() {
  const std::scoped_lock guard{mutex_};
  lines_.clear();
}

}  // namespace keyrow::sim
