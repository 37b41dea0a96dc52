#pragma once

#import <UserNotifications/UserNotifications.h>

#include "platform/UserNotifications.h"

/// Hands on what the system asks and tells about notifications.
@interface KeyrowUserNotificationsDelegate : NSObject <UNUserNotificationCenterDelegate>
- (instancetype)initWithDelegate:(keyrow::UserNotificationsDelegate&)delegate;
@end

namespace keyrow::macos {

/// `UserNotifications` on `UNUserNotificationCenter`.
class MacUserNotifications final : public UserNotifications {
 public:
  void setDelegate(UserNotificationsDelegate& delegate) override;
  void requestAuthorization(
      std::function<void(bool granted, const std::optional<SystemError>& error)> completion)
      override;
  void add(const UserNotification& notification,
           std::function<void(const std::optional<SystemError>& error)> completion) override;
  void removePending(std::string_view identifier) override;
  void removeDelivered(std::string_view identifier) override;

 private:
  /// The notification centre does not retain it.
  KeyrowUserNotificationsDelegate* delegate_ = nil;
};

}  // namespace keyrow::macos
