#pragma once

#include <map>
#include <string>

#include "platform/UserNotifications.h"

namespace keyrow::sim {

/// The notifications that the user finds, and whether Keyrow may post any.
struct NotificationBoard {
  bool isAuthorized = true;
  /// By identifier: a new one takes the place of an old one.
  std::map<std::string, UserNotification> delivered;
};

}  // namespace keyrow::sim
