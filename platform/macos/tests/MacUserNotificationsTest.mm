#include "platform/macos/MacUserNotifications.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"
#include "platform/macos/tests/Eventually.h"
#include "platform/macos/tests/ReplacedMethod.h"

/// The notification centre of an application; these tests are none, and have none.
@interface KeyrowFakeNotificationCenter : NSObject
@property(weak) id<UNUserNotificationCenterDelegate> delegate;
@property UNAuthorizationOptions askedOptions;
@property(copy) void (^answer)(BOOL granted, NSError* error);
@property(strong) UNNotificationRequest* request;
@property(copy) void (^added)(NSError* error);
@property(copy) NSArray<NSString*>* removedPending;
@property(copy) NSArray<NSString*>* removedDelivered;
@end

@implementation KeyrowFakeNotificationCenter
- (void)requestAuthorizationWithOptions:(UNAuthorizationOptions)options
                      completionHandler:(void (^)(BOOL granted, NSError* error))completionHandler {
  self.askedOptions = options;
  self.answer = completionHandler;
}
- (void)addNotificationRequest:(UNNotificationRequest*)request
         withCompletionHandler:(void (^)(NSError* error))completionHandler {
  self.request = request;
  self.added = completionHandler;
}
- (void)removePendingNotificationRequestsWithIdentifiers:(NSArray<NSString*>*)identifiers {
  self.removedPending = identifiers;
}
- (void)removeDeliveredNotificationsWithIdentifiers:(NSArray<NSString*>*)identifiers {
  self.removedDelivered = identifiers;
}
@end

/// What the system hands out, and nobody else can make.
@interface KeyrowFakeNotification : NSObject
@property(strong) UNNotificationRequest* request;
@end

@implementation KeyrowFakeNotification
@end

@interface KeyrowFakeNotificationResponse : NSObject
@property(strong) KeyrowFakeNotification* notification;
@end

@implementation KeyrowFakeNotificationResponse
@end

namespace keyrow::macos {
namespace {

using Error = std::optional<SystemError>;

NSError* refusal() {
  return [NSError errorWithDomain:@"app.keyrow.Keyrow.mac-tests"
                             code:7
                         userInfo:@{NSLocalizedDescriptionKey : @"No."}];
}

void expectRefusal(const Error& error) {
  ASSERT_TRUE(error);
  EXPECT_EQ(error->domain, "app.keyrow.Keyrow.mac-tests");
  EXPECT_EQ(error->code, 7);
  EXPECT_EQ(error->errorDescription, "No.");
}

class MacUserNotificationsTest : public ::testing::Test, public UserNotificationsDelegate {
 protected:
  KeyrowFakeNotificationCenter* const center = [[KeyrowFakeNotificationCenter alloc] init];
  const ReplacedMethod currentCenter {
    class_getClassMethod(UNUserNotificationCenter.class, @selector(currentNotificationCenter)),
        ^id(Class) {
          return this->center;
        }
  };
  const std::unique_ptr<UserNotifications> notifications = makeUserNotifications();

  NotificationPresentation presentation = NotificationPresentation::none;
  std::vector<std::string> told;
  std::function<void()> completed;
  bool isMainThread = false;

  NotificationPresentation willPresentNotification(std::string_view identifier) override {
    isMainThread = NSThread.isMainThread != NO;
    told.push_back("present " + std::string{identifier});
    return presentation;
  }

  void didReceiveNotificationResponse(const std::string& identifier,
                                      std::function<void()> whenCompleted) override {
    isMainThread = NSThread.isMainThread != NO;
    told.push_back("response " + identifier);
    completed = std::move(whenCompleted);
  }

  static KeyrowFakeNotification* notification(NSString* identifier) {
    KeyrowFakeNotification* const made = [[KeyrowFakeNotification alloc] init];
    made.request =
        [UNNotificationRequest requestWithIdentifier:identifier
                                             content:[[UNMutableNotificationContent alloc] init]
                                             trigger:nil];
    return made;
  }

  /// Asks from another thread, as the system may, and waits for the answer.
  std::optional<UNNotificationPresentationOptions> optionsFor(NSString* identifier) {
    UNNotification* const arrived = (UNNotification*)(id)notification(identifier);
    auto answer = std::make_shared<std::optional<UNNotificationPresentationOptions>>();
    std::thread{[&] {
      [center.delegate userNotificationCenter:(UNUserNotificationCenter*)(id)center
                      willPresentNotification:arrived
                        withCompletionHandler:^(UNNotificationPresentationOptions options) {
                          *answer = options;
                        }];
    }}.join();
    eventually([&] { return answer->has_value(); });
    return *answer;
  }
};

TEST_F(MacUserNotificationsTest, AsksForBadgesSoundsAndAlerts) {
  std::optional<bool> granted;
  Error error;
  notifications->requestAuthorization([&](bool isGranted, const Error& what) {
    granted = isGranted;
    error = what;
  });
  EXPECT_EQ(center.askedOptions,
            UNAuthorizationOptionBadge | UNAuthorizationOptionSound | UNAuthorizationOptionAlert);
  EXPECT_EQ(granted, std::nullopt);
  center.answer(YES, nil);
  EXPECT_EQ(granted, true);
  EXPECT_FALSE(error);
  center.answer(NO, refusal());
  EXPECT_EQ(granted, false);
  expectRefusal(error);
}

TEST_F(MacUserNotificationsTest, DeliversAtOnceWithTheDefaultSound) {
  int completions = 0;
  Error error;
  notifications->add({.identifier = "update", .title = "Naïve 😀", .body = "Version 2"},
                     [&](const Error& what) {
                       ++completions;
                       error = what;
                     });
  ASSERT_NE(center.request, nil);
  EXPECT_EQ(utf8Text(center.request.identifier), "update");
  EXPECT_EQ(utf8Text(center.request.content.title), "Naïve 😀");
  EXPECT_EQ(utf8Text(center.request.content.body), "Version 2");
  EXPECT_TRUE([center.request.content.sound isEqual:UNNotificationSound.defaultSound]);
  EXPECT_EQ(completions, 0);
  center.added(nil);
  EXPECT_EQ(completions, 1);
  EXPECT_FALSE(error);
  center.added(refusal());
  EXPECT_EQ(completions, 2);
  expectRefusal(error);
}

TEST_F(MacUserNotificationsTest, RemovesByIdentifier) {
  notifications->removePending("waiting");
  EXPECT_TRUE([center.removedPending isEqualToArray:@[ @"waiting" ]]);
  EXPECT_EQ(center.removedDelivered, nil);
  notifications->removeDelivered("shown");
  EXPECT_TRUE([center.removedDelivered isEqualToArray:@[ @"shown" ]]);
}

TEST_F(MacUserNotificationsTest, ItsDelegateAnswersOnTheMainThread) {
  notifications->setDelegate(*this);
  ASSERT_NE(center.delegate, nil);
  EXPECT_EQ(optionsFor(@"update"), UNNotificationPresentationOptionNone);
  EXPECT_TRUE(isMainThread);
  presentation = NotificationPresentation::soundListBanner;
  EXPECT_EQ(optionsFor(@"another"), UNNotificationPresentationOptionSound |
                                        UNNotificationPresentationOptionList |
                                        UNNotificationPresentationOptionBanner);
  EXPECT_EQ(told, (std::vector<std::string>{"present update", "present another"}));
}

TEST_F(MacUserNotificationsTest, AResponseIsOverWhenItIsDealtWith) {
  notifications->setDelegate(*this);
  ASSERT_NE(center.delegate, nil);
  KeyrowFakeNotificationResponse* const response = [[KeyrowFakeNotificationResponse alloc] init];
  response.notification = notification(@"update");
  bool isOver = false;
  bool* const over = &isOver;
  [center.delegate userNotificationCenter:(UNUserNotificationCenter*)(id)center
           didReceiveNotificationResponse:(UNNotificationResponse*)(id)response
                    withCompletionHandler:^{
                      *over = true;
                    }];
  ASSERT_TRUE(eventually([&] { return !told.empty(); }));
  EXPECT_EQ(told.front(), "response update");
  EXPECT_TRUE(isMainThread);
  EXPECT_FALSE(isOver);
  completed();
  EXPECT_TRUE(isOver);
}

}  // namespace
}  // namespace keyrow::macos
