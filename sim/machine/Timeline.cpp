#include "sim/machine/Timeline.h"

#include <utility>

namespace keyrow::sim {

void Timeline::add(TimelineEvent::Kind kind, std::string text) {
  TimelineEvent event{scheduler_.now(), kind, std::move(text)};
  const std::scoped_lock guard{mutex_};
  if (listener_) listener_(event);
  events_.push_back(std::move(event));
}

std::vector<TimelineEvent> Timeline::events() const {
  const std::scoped_lock guard{mutex_};
  return events_;
}

void Timeline::clear() {
  const std::scoped_lock guard{mutex_};
  events_.clear();
}

void Timeline::setListener(Listener listener) {
  const std::scoped_lock guard{mutex_};
  listener_ = std::move(listener);
}

}  // namespace keyrow::sim
