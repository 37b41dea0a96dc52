#pragma once

#include <chrono>
#include <cstdint>
#include <vector>

#include "platform/Clock.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Whether the keyboard has been in this Keyrow's hands all the time, so that a mode in it that
/// Keyrow did not write is somebody's choice. Others take it away: another user, a newer Keyrow,
/// and sleep, from which it may come back in any mode. Their notices can be late, above all for a
/// process that hung, so this asks. Main thread only.
class HardwareCustody {
 public:
  struct Uses {
    Clock& clock;
    Workspace& workspace;
  };

  explicit HardwareCustody(Uses uses) : use_{uses} {}

  /// Keyrow takes control of the keyboard. Those of its instances that run now are older.
  void begin();

  /// The Mac has woken up, and Keyrow has seen to the keyboard.
  void resume() { asleepBefore_ = use_.clock.timeAsleep(); }

  /// Asks the system.
  bool isUnbroken() const;

 private:
  bool hasNewerInstance() const;

  const Uses use_;
  std::vector<std::int32_t> knownInstances_;
  std::chrono::nanoseconds asleepBefore_{0};
};

}  // namespace keyrow
