#pragma once

namespace keyrow {

/// The monitoring of all keys, as the application delegate starts and stops it.
class KeyboardMonitoring {
 public:
  /// Makes sure that keys are monitored; false when the system does not allow it. May be
  /// called again at any time.
  virtual bool startEventTap() = 0;
  virtual void stopEventTap() = 0;

 protected:
  ~KeyboardMonitoring() = default;
};

}  // namespace keyrow
