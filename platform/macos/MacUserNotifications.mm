#include "platform/macos/MacUserNotifications.h"

#include <memory>
#include <utility>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

@implementation KeyrowUserNotificationsDelegate {
  keyrow::UserNotificationsDelegate* _delegate;
}

- (instancetype)initWithDelegate:(keyrow::UserNotificationsDelegate&)delegate {
  self = [super init];
  if (self) _delegate = &delegate;
  return self;
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
       willPresentNotification:(UNNotification*)notification
         withCompletionHandler:(void (^)(UNNotificationPresentationOptions))completionHandler {
  const auto identifier = keyrow::macos::utf8Text(notification.request.identifier);
  keyrow::UserNotificationsDelegate* const delegate = _delegate;
  dispatch_async(dispatch_get_main_queue(), ^{
    const auto presentation = delegate->willPresentNotification(identifier);
    completionHandler(presentation == keyrow::NotificationPresentation::soundListBanner
                          ? UNNotificationPresentationOptionSound |
                                UNNotificationPresentationOptionList |
                                UNNotificationPresentationOptionBanner
                          : UNNotificationPresentationOptionNone);
  });
}

- (void)userNotificationCenter:(UNUserNotificationCenter*)center
    didReceiveNotificationResponse:(UNNotificationResponse*)response
             withCompletionHandler:(void (^)(void))completionHandler {
  const auto identifier = keyrow::macos::utf8Text(response.notification.request.identifier);
  keyrow::UserNotificationsDelegate* const delegate = _delegate;
  dispatch_async(dispatch_get_main_queue(), ^{
    delegate->didReceiveNotificationResponse(identifier,
                                             [completionHandler] { completionHandler(); });
  });
}

@end

namespace keyrow::macos {

namespace {

UNUserNotificationCenter* center() { return UNUserNotificationCenter.currentNotificationCenter; }

std::optional<SystemError> systemError(NSError* error) {
  if (!error) return std::nullopt;
  return SystemError{.errorDescription = utf8Text(error.localizedDescription),
                     .domain = utf8Text(error.domain),
                     .code = error.code};
}

class MacUserNotifications final : public UserNotifications {
 public:
  void setDelegate(UserNotificationsDelegate& delegate) override {
    delegate_ = [[KeyrowUserNotificationsDelegate alloc] initWithDelegate:delegate];
    center().delegate = delegate_;
  }

  void requestAuthorization(
      std::function<void(bool granted, const std::optional<SystemError>& error)> completion)
      override {
    [center()
        requestAuthorizationWithOptions:UNAuthorizationOptionBadge | UNAuthorizationOptionSound |
                                        UNAuthorizationOptionAlert
                      completionHandler:^(BOOL granted, NSError* error) {
                        completion(granted, systemError(error));
                      }];
  }

  void add(const UserNotification& notification,
           std::function<void(const std::optional<SystemError>& error)> completion) override {
    UNMutableNotificationContent* const content = [[UNMutableNotificationContent alloc] init];
    content.title = nsString(notification.title);
    content.body = nsString(notification.body);
    content.sound = UNNotificationSound.defaultSound;
    [center() addNotificationRequest:[UNNotificationRequest
                                         requestWithIdentifier:nsString(notification.identifier)
                                                       content:content
                                                       trigger:nil]
               withCompletionHandler:^(NSError* error) {
                 completion(systemError(error));
               }];
  }

  void removePending(std::string_view identifier) override {
    [center() removePendingNotificationRequestsWithIdentifiers:@[ nsString(identifier) ]];
  }

  void removeDelivered(std::string_view identifier) override {
    [center() removeDeliveredNotificationsWithIdentifiers:@[ nsString(identifier) ]];
  }

 private:
  /// The notification centre does not retain it.
  KeyrowUserNotificationsDelegate* delegate_ = nil;
};

}  // namespace

std::unique_ptr<UserNotifications> makeUserNotifications() {
  return std::make_unique<MacUserNotifications>();
}

}  // namespace keyrow::macos
