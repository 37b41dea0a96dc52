#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <utility>

#include "input/TappedEventHandler.h"
#include "platform/EventTaps.h"
#include "platform/MainQueue.h"
#include "platform/SystemLog.h"

namespace keyrow {

/// Owns the application's one keyboard event tap: runs it in a worker thread, and repairs
/// it when it is told to. Main thread only.
class KeyboardEventTapController {
 public:
  /// What it uses. `makeHandler` makes the handler of a new tap. `tapWasDisabled` is told, on
  /// the main queue, that the system has disabled the current tap, and by which event it was
  /// announced. `inputLog` is the logger of the "input" category.
  struct Uses {
    EventTaps& eventTaps;
    MainQueue& mainQueue;
    std::function<std::shared_ptr<TappedEventHandler>()> makeHandler;
    std::function<void(std::uint32_t eventType)> tapWasDisabled;
    Logger& inputLog;
  };

  explicit KeyboardEventTapController(Uses uses) : use_{std::move(uses)} {}

  /// Makes sure that a working tap exists; false when the system does not allow one.
  bool startEventTap();

  /// Ends the tap and its worker; does nothing where there is none.
  void stopEventTap();

  /// The same, and waits until every worker has ended: what they leave behind is on the main
  /// queue then. A worker that does not end within two seconds is left to itself.
  void stopEventTapAndWait();

  /// Repairs the tap after the system has disabled it, which `eventType` announced; logs
  /// how that went. False when there is none now.
  bool recoverEventTap(std::uint32_t eventType);

  /// Makes sure that a started tap works, where the system may have disabled it without
  /// telling: a dead tap goes, with its worker, and a new one comes in its place. False when
  /// the system does not allow one.
  bool reviveEventTap();

 private:
  class Worker;

  /// What the main thread and the workers share.
  struct State {
    /// Guards the fields below; never held across a call into the system.
    std::mutex stateLock;
    /// The current tap; null while stopped.
    std::shared_ptr<EventTap> eventTap;
    std::shared_ptr<RunLoopSource> runLoopSource;
    /// The current tap's worker; null while stopped.
    std::shared_ptr<Worker> worker;
    /// The worker's, while it runs.
    std::shared_ptr<RunLoop> workerRunLoop;
    /// How many workers have not ended.
    int workerCount = 0;
    std::condition_variable workerEnded;
  };

  static void runTapThread(const std::weak_ptr<State>& weakState, EventTaps& eventTaps,
                           const std::shared_ptr<EventTap>& tap,
                           const std::shared_ptr<RunLoopSource>& source, Worker& worker);
  bool enableExistingTap();
  void handleAnnouncement(std::uint32_t eventType, const std::shared_ptr<Worker>& from);

  const Uses use_;
  const std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace keyrow
