#include "platform/macos/MacPorts.h"

#import <AppKit/AppKit.h>
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "platform/Application.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/tests/Eventually.h"

namespace keyrow::macos {
namespace {

constexpr auto name = "app.keyrow.Keyrow.mac-tests.notification";

class MacNotificationCenterTest : public ::testing::Test {
 protected:
  const std::unique_ptr<NotificationCenter> center = makeNotificationCenter();
  int calls = 0;
  ObserverToken token = center->addObserver(name, [this] { ++calls; });
};

TEST_F(MacNotificationCenterTest, RunsTheObserverBeforePostingReturns) {
  center->post(name);
  EXPECT_EQ(calls, 1);
  center->post(name);
  EXPECT_EQ(calls, 2);
}

TEST_F(MacNotificationCenterTest, HearsWhatAppKitPosts) {
  [NSNotificationCenter.defaultCenter postNotificationName:nsString(name) object:NSApp];
  EXPECT_EQ(calls, 1);
}

TEST_F(MacNotificationCenterTest, LeavesTheObserverAloneOnceItsTokenIsGone) {
  center->post(name);
  token = {};
  center->post(name);
  EXPECT_EQ(calls, 1);
}

TEST_F(MacNotificationCenterTest, PassesOtherNamesBy) {
  center->post("app.keyrow.Keyrow.mac-tests");
  EXPECT_EQ(calls, 0);
}

TEST_F(MacNotificationCenterTest, RunsTheObserverOnTheMainThread) {
  bool isMainThread = false;
  std::atomic<bool> isPosted = false;
  token = center->addObserver(name, [&] { isMainThread = NSThread.isMainThread != NO; });
  std::thread poster{[&] {
    center->post(name);
    isPosted = true;
  }};
  EXPECT_TRUE(eventually([&] { return isPosted.load(); }));
  poster.join();
  EXPECT_TRUE(isMainThread);
}

TEST(NotificationNameTest, IsAppKitsOwn) {
  EXPECT_EQ(applicationDidBecomeActive, utf8Text(NSApplicationDidBecomeActiveNotification));
}

}  // namespace
}  // namespace keyrow::macos
