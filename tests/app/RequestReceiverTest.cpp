#include "app/RequestReceiver.h"

#include <gtest/gtest.h>

#include "core/AppIdentifier.h"
#include "core/Request.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;

/// A Keyrow that runs, beside others who ask it, and who hear what it announces.
class RequestReceiverTest : public ::testing::Test {
 protected:
  RequestReceiverTest() { stage_.launchKeyrow(); }

  void askToWatch() {
    const Request request{.number = std::to_string(++askedCount_),
                          .time = stage_.mac.scheduler.now(),
                          .kind = Request::Kind::watch};
    stage_.mac.distributedNotifications.post({.name = std::string{requestNotification::request},
                                              .object = std::string{appIdentifier},
                                              .userInfo = userInfo(request),
                                              .user = stage_.mac.sessions.active()});
    stage_.mac.scheduler.advance(0s);
  }

  /// How many changes are announced while a setting changes once a second.
  int announcedIn(std::chrono::seconds time) {
    announcedCount_ = 0;
    for (auto passed = 0s; passed < time; passed += 1s) {
      isOn_ = !isOn_;
      stage_.mac.defaults.setValue(stage_.keyrowDomain(), "showCapsLockIndicator", isOn_);
      stage_.mac.scheduler.advance(1s);
    }
    return announcedCount_;
  }

 private:
  Stage stage_;
  int askedCount_ = 0;
  int announcedCount_ = 0;
  bool isOn_ = false;
  Registration announcements_{stage_.mac.distributedNotifications.observe(
      [this](const DistributedNotification& notification) {
        if (notification.name == requestNotification::change) ++announcedCount_;
      })};
};

TEST_F(RequestReceiverTest, AnnouncesChangesUntilTenSecondsAfterItWasAskedLast) {
  EXPECT_EQ(announcedIn(5s), 0);
  askToWatch();
  EXPECT_EQ(announcedIn(5s), 5);
  askToWatch();
  EXPECT_EQ(announcedIn(9s), 9);
  announcedIn(2s);
  EXPECT_EQ(announcedIn(60s), 0);
  askToWatch();
  EXPECT_EQ(announcedIn(5s), 5);
}

}  // namespace
}  // namespace keyrow::sim
