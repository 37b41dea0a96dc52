#pragma once

#include "input/CapsLockMonitor.h"
#include "input/KeyboardSourceMonitor.h"
#include "platform/Accessibility.h"
#include "platform/InputMonitoring.h"

namespace keyrow {

/// Lets the monitors listen to keyboards as soon as the user has said whether Keyrow may, and asks
/// for that where nobody has yet: once in the life of the process, and not beside the question for
/// Accessibility. Never waits for an answer. Main thread only.
class KeyboardMonitoring {
 public:
  struct Uses {
    InputMonitoring& inputMonitoring;
    Accessibility& accessibility;
    KeyboardSourceMonitor& keyboardSourceMonitor;
    CapsLockMonitor& capsLockMonitor;
  };

  explicit KeyboardMonitoring(const Uses& uses) : use_{uses} {}

  /// Starts to listen for where keys come from, or asks whether it may. The Caps Lock monitor is
  /// started by whoever applies its setting.
  void start();

  /// Asks what has not been asked, and starts what did not start: Accessibility was granted, Keyrow
  /// became active, the user was in System Settings.
  void permissionsMayHaveChanged();

  /// Starts what may and did not start, and asks the user nothing.
  void lookAgain();

  /// Stops listening for where keys come from; an answer that comes now changes nothing any more.
  void stop();

 private:
  void listen();
  bool hasAnswer();

  const Uses use_;

  /// Kept for good: the user is asked once.
  Registration request_;
};

}  // namespace keyrow
