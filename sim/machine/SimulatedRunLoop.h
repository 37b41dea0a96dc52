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

  /// Runs work in the run loop's thread and waits for it. False when it does not get to
  /// it: it is not running, or ends before.
  bool perform(const std::function<void()>& work);

  /// Ends it for good, as the end of the process does.
  void shutDown();

 private:
  /// Guards the fields below.
  std::mutex mutex;
  std::condition_variable changed;
  std::set<RunLoopSource*> sources;
  std::deque<std::function<void()>> queue;
  bool isRunning = false;
  bool isStopped = false;
  bool isShutDown = false;
  bool isFinished = false;
  /// How many pieces of work have been taken on, and how many are done.
  std::uint64_t performed = 0;
  std::uint64_t requested = 0;
};

}  // namespace keyrow::sim
