#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/macos/Conversions.h"
#include "platform/macos/tests/Eventually.h"

namespace keyrow::macos {
namespace {

/// The notifications are the whole session's, so the name is this test's alone.
class MacDistributedNotificationCenterTest : public ::testing::Test {
 protected:
  const std::unique_ptr<DistributedNotificationCenter> center = makeDistributedNotificationCenter();
  const std::string name = "app.keyrow.Keyrow.mac-tests." + utf8Text(NSUUID.UUID.UUIDString);
  std::vector<std::optional<PropertyDictionary>> received;

  ObserverToken observe(const std::optional<std::string>& object) {
    return center->addObserver(name, object, [this](const std::optional<PropertyDictionary>& info) {
      received.push_back(info);
    });
  }
};

TEST_F(MacDistributedNotificationCenterTest, DeliversProcessIdentifiersAsIntegers) {
  const auto token = observe("app.keyrow.Keyrow");
  const PropertyDictionary info{{"sourcePID", 501}, {"targetPID", 400}};
  center->post(name, "app.keyrow.Keyrow", info);
  ASSERT_TRUE(eventually([&] { return !received.empty(); }));
  EXPECT_EQ(received.front(), info);
}

TEST_F(MacDistributedNotificationCenterTest, HearsOnlyOfTheObjectThatItAskedFor) {
  const auto token = observe("app.keyrow.Keyrow");
  center->post(name, "com.example.other", {{"number", 1}});
  center->post(name, "app.keyrow.Keyrow", {{"number", 2}});
  ASSERT_TRUE(eventually([&] { return !received.empty(); }));
  EXPECT_EQ(received.front(), (PropertyDictionary{{"number", 2}}));
}

TEST_F(MacDistributedNotificationCenterTest, HearsOfEveryObjectWhenItAsksForNone) {
  const auto token = observe(std::nullopt);
  center->post(name, "com.example.other", {{"number", 1}});
  EXPECT_TRUE(eventually([&] { return !received.empty(); }));
}

TEST_F(MacDistributedNotificationCenterTest, HearsOfItWhileTheApplicationIsNotActive) {
  NSDistributedNotificationCenter* const system = NSDistributedNotificationCenter.defaultCenter;
  const bool wasSuspended = system.suspended;
  system.suspended = YES;
  const auto token = observe(std::nullopt);
  // Not as this port posts, but as macOS may.
  [system postNotificationName:nsString(name) object:nil userInfo:nil deliverImmediately:NO];
  EXPECT_TRUE(eventually([&] { return !received.empty(); }));
  system.suspended = wasSuspended;
}

TEST_F(MacDistributedNotificationCenterTest, LeavesAnObserverAloneOnceItsTokenIsGone) {
  auto forgotten = observe(std::nullopt);
  forgotten = {};
  bool isHeard = false;
  const auto token = center->addObserver(
      name, std::nullopt, [&](const std::optional<PropertyDictionary>&) { isHeard = true; });
  center->post(name, "app.keyrow.Keyrow", {});
  ASSERT_TRUE(eventually([&] { return isHeard; }));
  EXPECT_TRUE(received.empty());
}

}  // namespace
}  // namespace keyrow::macos
