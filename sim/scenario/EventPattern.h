#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sim/machine/Timeline.h"
#include "sim/scenario/Outcome.h"

namespace keyrow::sim {

/// What an event looks like that somebody expects.
struct EventPattern {
  TimelineEvent::Kind kind;
  /// The event's terms; an absent one, and one beyond the last, may be anything.
  std::vector<std::optional<std::string>> terms;

  bool matches(const TimelineEvent& event) const;
  /// As it is typed.
  std::string text() const;
};

/// A pattern for a change from one thing to another, behind the terms that say of what.
EventPattern changePattern(TimelineEvent::Kind kind, std::vector<std::optional<std::string>> of,
                           std::string before, std::string after);

/// What is to have come of a line: an event so many times, or at least once where no number
/// is given; or several events, one after the other.
struct EventExpectation {
  std::vector<EventPattern> inOrder;
  std::optional<std::size_t> times;

  Outcome check(const std::vector<TimelineEvent>& events) const;
};

}  // namespace keyrow::sim
