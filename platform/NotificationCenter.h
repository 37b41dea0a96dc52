#pragma once

#include <functional>
#include <string_view>

#include "platform/Port.h"
#include "platform/Registration.h"

namespace keyrow {

/// The process's default notification centre (`NSNotificationCenter`).
class NotificationCenter : public Port {
 public:
  /// Posts a notification with no object; observers run before this returns.
  virtual void post(std::string_view name) = 0;

  /// Runs `handler` on the main queue at every notification of that name, until the
  /// token is destroyed.
  virtual ObserverToken addObserver(std::string_view name, std::function<void()> handler) = 0;
};

}  // namespace keyrow
