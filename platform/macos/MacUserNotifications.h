#pragma once

#import <UserNotifications/UserNotifications.h>

#include "platform/UserNotifications.h"

/// Hands on what the system asks and tells about notifications.
@interface KeyrowUserNotificationsDelegate : NSObject <UNUserNotificationCenterDelegate>
- (instancetype)initWithDelegate:(keyrow::UserNotificationsDelegate&)delegate;
@end
