#pragma once

#include <functional>

#include "platform/Port.h"
#include "platform/Registration.h"

namespace keyrow {

/// What the user has said about Input Monitoring (`IOHIDAccessType`).
enum class InputMonitoringAccess { granted, denied, unknown };

/// The Input Monitoring permission, without which no HID manager of keyboards opens.
class InputMonitoring : public Port {
 public:
  /// What the user has said (`IOHIDCheckAccess` with `kIOHIDRequestTypeListenEvent`); never waits.
  virtual InputMonitoringAccess access() = 0;

  /// Lets the system ask the user, and waits for the answer (`IOHIDRequestAccess`) in a thread
  /// that does nothing else and that nobody waits for. Then runs `answered` on the main thread,
  /// unless the returned request was destroyed before; the question stays even so.
  virtual Registration requestAccess(std::function<void()> answered) = 0;
};

}  // namespace keyrow
