#pragma once

#include <cstdint>
#include <memory>
#include <mutex>

#include "platform/EventTaps.h"
#include "platform/SystemLog.h"

namespace keyrow {

/// Owns the application's one keyboard event tap: runs it in a worker thread, and repairs
/// it when the system disables it. Main thread only.
class KeyboardEventTapController {
 public:
  /// What it uses. `inputLog` is the logger of the "input" category.
  struct Uses {
    EventTaps& eventTaps;
    TappedEventHandler& handler;
    Logger& inputLog;
  };

  explicit KeyboardEventTapController(const Uses& uses) : use_{uses} {}

  /// Makes sure that a working tap exists; false, and logged, when the system does not
  /// allow one.
  bool startEventTap();

  /// Ends the tap and its worker; does nothing where there is none.
  void stopEventTap();

  /// Repairs the tap after the system has disabled it, which `eventType` announced; logs
  /// how that went.
  void recoverEventTap(std::uint32_t eventType);

  /// Makes sure that a started tap works, where the system may have disabled it without
  /// telling: a dead tap goes, with its worker, and a new one comes in its place. A failure
  /// is logged; false then.
  bool reviveEventTap();

 private:
  /// What the main thread and the workers share.
  struct State {
    /// Guards the fields below; never held across a call into the system.
    std::mutex stateLock;
    /// The current tap; null while stopped.
    std::shared_ptr<EventTap> eventTap;
    std::shared_ptr<RunLoopSource> runLoopSource;
    /// The worker's, while it runs.
    std::shared_ptr<RunLoop> workerRunLoop;
  };

  static void runTapThread(const std::weak_ptr<State>& weakState, EventTaps& eventTaps,
                           const std::shared_ptr<EventTap>& tap,
                           const std::shared_ptr<RunLoopSource>& source);
  bool installEventTap();
  bool enableExistingTap();

  const Uses use_;
  const std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace keyrow
