#pragma once

#include <atomic>

namespace keyrow {

/// Whether the settings window waits for the key of the per-app shortcut. As long as it does, every
/// key that goes down passes the event tap, so that it gets there. The main thread begins and ends
/// it; safe to ask from any thread.
class ShortcutCapture {
 public:
  bool isRunning() const { return isRunning_.load(std::memory_order_relaxed); }

  void begin() { isRunning_.store(true, std::memory_order_relaxed); }
  void end() { isRunning_.store(false, std::memory_order_relaxed); }

 private:
  /// The main thread sets it, the event tap's worker reads it at each press.
  std::atomic<bool> isRunning_{false};
};

}  // namespace keyrow
