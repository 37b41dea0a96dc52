#include "sim/ports/MainThread.h"

#include <utility>

namespace keyrow::sim {

void MainThread::deliver(std::function<void()> work) {
  if (hasEnded_) return;
  if (isHanging) {
    waiting.push_back(std::move(work));
  } else {
    work();
  }
}

void MainThread::resume() {
  isHanging = false;
  for (auto& work : std::exchange(waiting, {})) deliver(std::move(work));
}

void MainThread::end() {
  hasEnded_ = true;
  waiting.clear();
}

}  // namespace keyrow::sim
