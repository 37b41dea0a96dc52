#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Port.h"
#include "platform/SystemError.h"

namespace keyrow {

/// How a notification is presented while the application is in front
/// (`UNNotificationPresentationOptions`).
enum class NotificationPresentation {
  /// With no options: not at all.
  none,
  /// With sound, in the list, as a banner.
  soundListBanner,
};

/// What the system asks and tells about this application's notifications
/// (`UNUserNotificationCenterDelegate`). Main thread only.
class UserNotificationsDelegate {
 public:
  virtual NotificationPresentation willPresentNotification(std::string_view identifier) = 0;

  /// The user responded to a notification. `completed` has to be called when that is dealt
  /// with.
  virtual void didReceiveNotificationResponse(const std::string& identifier,
                                              std::function<void()> completed) = 0;

 protected:
  ~UserNotificationsDelegate() = default;
};

/// A notification with the default sound, delivered at once.
struct UserNotification {
  std::string identifier;
  std::string title;
  std::string body;
};

/// The user's notification centre (`UNUserNotificationCenter`).
class UserNotifications : public Port {
 public:
  /// `delegate` has to outlive this.
  virtual void setDelegate(UserNotificationsDelegate& delegate) = 0;

  /// Asks the user for permission to show badges, play sounds and show alerts. `completion`
  /// may run on any thread; it gets an error, or none and whether that was granted.
  virtual void requestAuthorization(
      std::function<void(bool granted, const std::optional<SystemError>& error)> completion) = 0;

  /// `completion` may run on any thread; it gets an error, or none.
  virtual void add(const UserNotification& notification,
                   std::function<void(const std::optional<SystemError>& error)> completion) = 0;

  virtual void removePending(std::string_view identifier) = 0;
  virtual void removeDelivered(std::string_view identifier) = 0;
};

}  // namespace keyrow
