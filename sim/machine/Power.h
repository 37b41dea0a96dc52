#pragma once

#include <chrono>
#include <functional>

#include "sim/machine/ObserverList.h"
#include "sim/machine/PropertyText.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// Whether the machine sleeps. Main thread only.
class Power {
 public:
  explicit Power(Timeline& timeline) : timeline_{timeline} {}

  bool isAsleep() const { return isAsleep_; }

  /// The scheduler, whose time mach ticks count, stands still while nothing runs: this is what
  /// passed besides.
  std::chrono::nanoseconds timeAsleep() const { return timeAsleep_; }

  /// Tells the processes, and falls asleep.
  void sleep() {
    sleepObservers_.notify();
    isAsleep_ = true;
    timeline_.add(TimelineEvent::Kind::screen, {quoted("the Mac sleeps")});
  }

  /// Wakes up, and tells the processes.
  void wake() {
    isAsleep_ = false;
    timeAsleep_ += sleepTime;
    timeline_.add(TimelineEvent::Kind::screen, {quoted("the Mac wakes up")});
    wakeObservers_.notify();
  }

  Registration observeWillSleep(std::function<void()> handler) {
    return sleepObservers_.add(std::move(handler));
  }
  Registration observeDidWake(std::function<void()> handler) {
    return wakeObservers_.add(std::move(handler));
  }

 private:
  /// Enough for everything that waits to be late.
  static constexpr std::chrono::minutes sleepTime{1};

  Timeline& timeline_;
  bool isAsleep_ = false;
  std::chrono::nanoseconds timeAsleep_{0};
  ObserverList<> sleepObservers_;
  ObserverList<> wakeObservers_;
};

}  // namespace keyrow::sim
