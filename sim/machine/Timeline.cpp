#include "sim/machine/Timeline.h"

#include <array>
#include <utility>

namespace keyrow::sim {

std::string_view wordOf(TimelineEvent::Kind kind) {
  /// In the order of `TimelineEvent::Kind`.
  constexpr std::array<std::string_view, TimelineEvent::kindCount> words{
      "hardware", "preference", "defaults", "override", "status", "log",   "screen",
      "voice",    "key",        "tap",      "process",  "fault",  "output"};
  return words.at(static_cast<std::size_t>(kind));
}

std::string textOf(const TimelineEvent& event) {
  std::string text{wordOf(event.kind)};
  for (const auto& term : event.terms) text += ' ' + term;
  return text;
}

void Timeline::add(TimelineEvent::Kind kind, std::vector<std::string> terms) {
  scheduler_.noteEvent();
  TimelineEvent event{scheduler_.now(), kind, std::move(terms)};
  const std::scoped_lock guard{mutex_};
  if (listener_) listener_(event);
  events_.push_back(std::move(event));
}

void Timeline::addChange(TimelineEvent::Kind kind, std::vector<std::string> terms,
                         std::string before, std::string after) {
  if (before == after) return;
  terms.push_back(std::move(before));
  terms.emplace_back("->");
  terms.push_back(std::move(after));
  add(kind, std::move(terms));
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
