#include "sim/ports/MainThread.h"

#include <utility>

namespace keyrow::sim {

void MainThread::deliver(Work work) {
  if (hasEnded_) return;
  if (isHanging_) {
    waiting_.push_back(std::move(work));
  } else {
    work();
  }
}

void MainThread::runBlock(Work block) {
  deliver([this, block = std::move(block)] {
    if (isQueueHeldUp_) {
      waitingBlocks_.push_back(block);
      return;
    }
    const bool wasInBlock = std::exchange(isInBlock_, true);
    block();
    isInBlock_ = wasInBlock;
  });
}

void MainThread::performInDefaultMode(Work work) {
  deliver([this, work = std::move(work)] {
    if (notInDefaultMode_ > 0) {
      waitingForDefaultMode_.push_back(work);
    } else {
      work();
    }
  });
}

void MainThread::beginTracking() {
  ++openMenus_;
  leaveDefaultMode();
}

void MainThread::endTracking() {
  --openMenus_;
  returnToDefaultMode();
}

void MainThread::returnToDefaultMode() {
  --notInDefaultMode_;
  while (notInDefaultMode_ == 0 && !waitingForDefaultMode_.empty()) {
    const auto work = std::move(waitingForDefaultMode_.front());
    waitingForDefaultMode_.pop_front();
    deliver(work);
  }
}

bool MainThread::beginModal() {
  leaveDefaultMode();
  return isInBlock_ && !std::exchange(isQueueHeldUp_, true);
}

void MainThread::endModal(bool heldUpQueue) {
  if (heldUpQueue) isQueueHeldUp_ = false;
  returnToDefaultMode();
  while (!isQueueHeldUp_ && !waitingBlocks_.empty()) {
    const auto block = std::move(waitingBlocks_.front());
    waitingBlocks_.pop_front();
    runBlock(block);
  }
}

void MainThread::resume() {
  isHanging_ = false;
  for (auto& work : std::exchange(waiting_, {})) deliver(std::move(work));
}

void MainThread::end() {
  hasEnded_ = true;
  waiting_.clear();
  waitingBlocks_.clear();
  waitingForDefaultMode_.clear();
}

}  // namespace keyrow::sim
