#pragma once

#include <deque>
#include <functional>
#include <vector>

namespace keyrow::sim {

/// Where a process's handlers run. What reaches a process that hangs waits; what reaches
/// one that has ended is lost. Used in the thread that runs the machine.
class MainThread {
 public:
  using Work = std::function<void()>;

  /// Runs work now, or as soon as the process answers again.
  void deliver(Work work);

  /// Runs a block of the main queue, which is serial: while one has not come back, because
  /// it runs an alert, the others wait.
  void runBlock(Work block);

  /// Runs work from the run loop, as soon as that is in its default mode.
  void performInDefaultMode(Work work);

  /// A menu opens or closes: that takes the run loop out of its default mode.
  void beginTracking();
  void endTracking();
  bool isTrackingMenu() const { return openMenus_ > 0; }

  /// The same for an alert that is run now. True when that holds up the main queue, which is
  /// to be told at the end.
  bool beginModal();
  void endModal(bool heldUpQueue);

  void hang() { isHanging_ = true; }

  /// Runs what has waited.
  void resume();

  void end();
  bool hasEnded() const { return hasEnded_; }

 private:
  void leaveDefaultMode() { ++notInDefaultMode_; }
  void returnToDefaultMode();

  bool isHanging_ = false;
  bool hasEnded_ = false;
  std::vector<Work> waiting_;
  bool isInBlock_ = false;
  bool isQueueHeldUp_ = false;
  std::deque<Work> waitingBlocks_;
  int openMenus_ = 0;
  /// How many menus and alerts are open.
  int notInDefaultMode_ = 0;
  std::deque<Work> waitingForDefaultMode_;
};

}  // namespace keyrow::sim
