#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "sim/machine/Scheduler.h"

namespace keyrow::sim {

/// Something observable that happened on the machine.
struct TimelineEvent {
  enum class Kind {
    /// The hardware's function-key mode changed.
    hardware,
    /// The system preference changed.
    preference,
    /// A stored setting changed.
    defaults,
    /// The stored override of an application changed.
    override_,
    /// The status item changed.
    status,
    /// A line was logged.
    log,
    /// The user sees something else, or the Mac itself changes.
    screen,
    /// VoiceOver speaks because an application asked it to.
    voice,
    /// A key reached an application, or the system.
    key,
    /// There is a working event tap where there was none, or the other way round.
    tap,
    /// A process started or ended.
    process,
    /// A port call failed.
    fault,
    /// A command-line program printed a line.
    output,
  };
  /// How many kinds there are.
  static constexpr std::size_t kindCount = static_cast<std::size_t>(Kind::output) + 1;

  /// Time since the machine was switched on.
  std::chrono::nanoseconds time;
  Kind kind;
  /// What happened, word by word, as scenarios write it behind the kind's word: texts are
  /// quoted, and an arrow stands between the two sides of a change.
  std::vector<std::string> terms;
};

/// The word for a kind of events, in scenarios and on the timeline: "hardware", "status" …
std::string_view wordOf(TimelineEvent::Kind kind);

/// The event as one types it, such as: hardware special -> standard
std::string textOf(const TimelineEvent& event);

/// Everything observable, in the order in which it happened. Safe to use from any thread.
class Timeline {
 public:
  using Listener = std::function<void(const TimelineEvent&)>;

  /// Events take their time from `scheduler`, and count there as something that happened.
  explicit Timeline(Scheduler& scheduler) : scheduler_{scheduler} {}

  void add(TimelineEvent::Kind kind, std::vector<std::string> terms);

  /// Adds "before -> after" behind the terms that say of what; nothing when they are equal.
  void addChange(TimelineEvent::Kind kind, std::vector<std::string> terms, std::string before,
                 std::string after);

  /// Everything since the beginning, or since it was last told to forget.
  std::vector<TimelineEvent> events() const;

  /// Forgets everything so far.
  void clear();

  /// Calls `listener` at every event from now on, in the thread that added it. It must
  /// not come back to the timeline.
  void setListener(Listener listener);

 private:
  Scheduler& scheduler_;
  /// Guards the fields below.
  mutable std::mutex mutex_;
  std::vector<TimelineEvent> events_;
  Listener listener_;
};

}  // namespace keyrow::sim
