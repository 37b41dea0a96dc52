#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <set>

#include "platform/EventTaps.h"

namespace keyrow::sim {

/// The run loop of a real thread. All but `run` is safe to call from any thread.
class SimulatedRunLoop {
 public:
  void addSource(RunLoopSource& source);
  void removeSource(RunLoopSource& source);
  /// Serves until it is stopped, or has no sources.
  void run();
  void stop();

  /// The thread has ended.
  void finish();

  /// Waits until it runs, or its thread has ended.
  void awaitStart();

  /// Waits until its thread has ended.
  void awaitEnd();

  /// Runs work in the run loop's thread and waits for it. False when it does not get to
  /// it: it is not running, or ends before.
  bool perform(const std::function<void()>& work);

  /// Ends it for good, as the end of the process does.
  void shutDown();

 private:
  /// Guards the fields below.
  std::mutex mutex_;
  std::condition_variable changed_;
  std::set<RunLoopSource*> sources_;
  std::deque<std::function<void()>> queue_;
  bool isRunning_ = false;
  bool isStopped_ = false;
  bool isShutDown_ = false;
  bool isFinished_ = false;
  /// How many pieces of work have been taken on, and how many are done.
  std::uint64_t performed_ = 0;
  std::uint64_t requested_ = 0;
};

}  // namespace keyrow::sim
