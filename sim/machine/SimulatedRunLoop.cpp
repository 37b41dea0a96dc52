#include "sim/machine/SimulatedRunLoop.h"

#include <memory>
#include <utility>

namespace keyrow::sim {

void SimulatedRunLoop::addSource(RunLoopSource& source) {
  const std::scoped_lock guard{mutex_};
  sources_.insert(&source);
}

void SimulatedRunLoop::removeSource(RunLoopSource& source) {
  const std::scoped_lock guard{mutex_};
  sources_.erase(&source);
  changed_.notify_all();
}

void SimulatedRunLoop::run() {
  std::unique_lock guard{mutex_};
  isRunning_ = true;
  changed_.notify_all();
  while (!isStopped_ && !isShutDown_ && !sources_.empty()) {
    if (queue_.empty()) {
      changed_.wait(guard);
      continue;
    }
    const auto work = std::move(queue_.front());
    queue_.pop_front();
    guard.unlock();
    work();
    guard.lock();
    ++performed_;
    changed_.notify_all();
  }
  isRunning_ = false;
  isStopped_ = false;
  queue_.clear();
  performed_ = requested_;
  changed_.notify_all();
}

void SimulatedRunLoop::stop() {
  const std::scoped_lock guard{mutex_};
  isStopped_ = true;
  changed_.notify_all();
}

void SimulatedRunLoop::finish() {
  const std::scoped_lock guard{mutex_};
  isFinished_ = true;
  changed_.notify_all();
}

void SimulatedRunLoop::awaitStart() {
  std::unique_lock guard{mutex_};
  changed_.wait(guard, [this] { return isRunning_ || isFinished_; });
}

void SimulatedRunLoop::awaitEnd() {
  std::unique_lock guard{mutex_};
  changed_.wait(guard, [this] { return isFinished_; });
}

bool SimulatedRunLoop::perform(const std::function<void()>& work) {
  std::unique_lock guard{mutex_};
  if (!isRunning_ || isStopped_ || isShutDown_) return false;
  auto isDone = std::make_shared<bool>(false);
  queue_.emplace_back([work, isDone] {
    work();
    *isDone = true;
  });
  const auto ticket = ++requested_;
  changed_.notify_all();
  changed_.wait(guard, [&] { return performed_ >= ticket; });
  return *isDone;
}

void SimulatedRunLoop::shutDown() {
  const std::scoped_lock guard{mutex_};
  isShutDown_ = true;
  changed_.notify_all();
}

}  // namespace keyrow::sim
