#include "sim/machine/SimulatedRunLoop.h"

#include <memory>
#include <utility>

namespace keyrow::sim {

void SimulatedRunLoop::addSource(RunLoopSource& source) {
  const std::scoped_lock guard{mutex};
  sources.insert(&source);
}

void SimulatedRunLoop::removeSource(RunLoopSource& source) {
  const std::scoped_lock guard{mutex};
  sources.erase(&source);
  changed.notify_all();
}

void SimulatedRunLoop::run() {
  std::unique_lock guard{mutex};
  isRunning = true;
  changed.notify_all();
  while (!isStopped && !isShutDown && !sources.empty()) {
    if (queue.empty()) {
      changed.wait(guard);
      continue;
    }
    const auto work = std::move(queue.front());
    queue.pop_front();
    guard.unlock();
    work();
    guard.lock();
    ++performed;
    changed.notify_all();
  }
  isRunning = false;
  isStopped = false;
  queue.clear();
  performed = requested;
  changed.notify_all();
}

void SimulatedRunLoop::stop() {
  const std::scoped_lock guard{mutex};
  isStopped = true;
  changed.notify_all();
}

void SimulatedRunLoop::finish() {
  const std::scoped_lock guard{mutex};
  isFinished = true;
  changed.notify_all();
}

void SimulatedRunLoop::awaitStart() {
  std::unique_lock guard{mutex};
  changed.wait(guard, [this] { return isRunning || isFinished; });
}

bool SimulatedRunLoop::perform(const std::function<void()>& work) {
  std::unique_lock guard{mutex};
  if (!isRunning || isStopped || isShutDown) return false;
  auto isDone = std::make_shared<bool>(false);
  queue.emplace_back([work, isDone] {
    work();
    *isDone = true;
  });
  const auto ticket = ++requested;
  changed.notify_all();
  changed.wait(guard, [&] { return performed >= ticket; });
  return *isDone;
}

void SimulatedRunLoop::shutDown() {
  const std::scoped_lock guard{mutex};
  isShutDown = true;
  changed.notify_all();
}

}  // namespace keyrow::sim
