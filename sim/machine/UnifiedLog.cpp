#include "sim/machine/UnifiedLog.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

#include "sim/machine/PropertyText.h"

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
  timeline_.add(TimelineEvent::Kind::log,
                {entry.category, std::string{logLevelName(entry.level)}, quoted(entry.message)});
  lines_.push_back(std::move(line));
}

std::vector<UnifiedLog::Line> UnifiedLog::lines(std::size_t start) const {
  const std::scoped_lock guard{mutex_};
  return {lines_.begin() + static_cast<std::ptrdiff_t>(std::min(start, lines_.size())),
          lines_.end()};
}

std::vector<UnifiedLog::Line> UnifiedLog::linesSince(
    std::chrono::system_clock::time_point date) const {
  const std::scoped_lock guard{mutex_};
  std::vector<Line> recent;
  // The clock can be set back, so the lines need not be in the order of their dates.
  std::ranges::copy_if(lines_, std::back_inserter(recent),
                       [date](const Line& line) { return line.entry.date >= date; });
  return recent;
}

std::size_t UnifiedLog::size() const {
  const std::scoped_lock guard{mutex_};
  return lines_.size();
}

void UnifiedLog::clear() {
  const std::scoped_lock guard{mutex_};
  lines_.clear();
}

}  // namespace keyrow::sim
