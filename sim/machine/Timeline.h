#pragma once

#include <chrono>
#include <functional>
#include <mutex>
#include <string>
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
    /// A line was logged.
    log,
    /// A port call failed.
    fault,
    /// The status item changed.
    statusItem,
    /// The user sees something else, or the Mac itself changes.
    screen,
    /// A process ended.
    process,
    /// A key reached an application, or the system.
    key,
  };

  /// Time since the machine was switched on.
  std::chrono::nanoseconds time;
  Kind kind;
  std::string text;
};

/// Everything observable, in the order in which it happened. Safe to use from any thread.
class Timeline {
 public:
  using Listener = std::function<void(const TimelineEvent&)>;

  /// Events take their time from `scheduler`.
  explicit Timeline(const Scheduler& scheduler) : scheduler_{scheduler} {}

  void add(TimelineEvent::Kind kind, std::string text);

  /// Everything so far.
  std::vector<TimelineEvent> events() const;

  /// Forgets everything so far, for runs so long that it would fill the memory.
  void clear();

  /// Calls `listener` at every event from now on, in the thread that added it. It must
  /// not come back to the timeline.
  void setListener(Listener listener);

 private:
  const Scheduler& scheduler_;
  /// Guards the fields below.
  mutable std::mutex mutex_;
  std::vector<TimelineEvent> events_;
  Listener listener_;
};

}  // namespace keyrow::sim
