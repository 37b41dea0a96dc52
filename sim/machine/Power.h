#pragma once

#include <functional>

#include "sim/machine/ObserverList.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// Whether the machine sleeps. Main thread only.
class Power {
 public:
  explicit Power(Timeline& timeline) : timeline_{timeline} {}

  bool isAsleep() const { return isAsleep_; }

  /// Tells the processes, and falls asleep.
  void sleep() {
    sleepObservers.notify();
    isAsleep_ = true;
    timeline_.add(TimelineEvent::Kind::screen, "the Mac sleeps");
  }

  /// Wakes up, and tells the processes.
  void wake() {
    isAsleep_ = false;
    timeline_.add(TimelineEvent::Kind::screen, "the Mac wakes up");
    wakeObservers.notify();
  }

  Registration observeWillSleep(std::function<void()> handler) {
    return sleepObservers.add(std::move(handler));
  }
  Registration observeDidWake(std::function<void()> handler) {
    return wakeObservers.add(std::move(handler));
  }

 private:
  Timeline& timeline_;
  bool isAsleep_ = false;
  ObserverList<> sleepObservers;
  ObserverList<> wakeObservers;
};

}  // namespace keyrow::sim
