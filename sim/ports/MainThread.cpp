#include "sim/ports/MainThread.h"

#include <utility>

namespace keyrow::sim {

void MainThread::deliver(std::function<void()> work) {
  if (hasEnded_) return;
  if (isHanging_) {
    waiting_.push_back(std::move(work));
  } else {
    work();
  }
}

void MainThread::resume() {
  isHanging_ = false;
  for (auto& work : std::exchange(waiting_, {})) deliver(std::move(work));
}

void MainThread::end() {
  hasEnded_ = true;
  waiting_.clear();
}

}  // namespace keyrow::sim
