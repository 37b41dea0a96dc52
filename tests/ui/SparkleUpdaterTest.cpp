#include "ui/SparkleUpdater.h"

#include <gmock/gmock.h>

#include <chrono>
#include <string>

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

constexpr auto reminder = "app.keyrow.Keyrow.sparkle-update-reminder";

class SparkleUpdaterTest : public SimulatedMacTest {
 protected:
  void SetUp() override {
    store("SUEnableAutomaticChecks", true);
    keyrow().settingsWindowController().createWindow();
    updater().start();
    mac.scheduler.advance(std::chrono::seconds{2});
  }

  SparkleUpdater& updater() { return keyrow().updater(); }
  bool isReminderThere() const { return mac.notifications.delivered.contains(reminder); }
};

TEST_F(SparkleUpdaterTest, AsksForAuthorizationOnceInAProcess) {
  mac.trace.start();
  updater().willScheduleUpdateCheck();
  updater().willScheduleUpdateCheck();
  EXPECT_THAT(mac.trace.take(), ElementsAre());
  EXPECT_THAT(logLines(), ElementsAre("app notice: Sparkle update reminder notifications "
                                      "authorization granted=true."));
}

TEST_F(SparkleUpdaterTest, AnswersAsAnApplicationWithoutWindows) {
  EXPECT_TRUE(updater().supportsGentleScheduledUpdateReminders());
  EXPECT_TRUE(updater().shouldHandleShowingScheduledUpdate(true));
  EXPECT_FALSE(updater().shouldHandleShowingScheduledUpdate(false));
}

TEST_F(SparkleUpdaterTest, AUserInitiatedCheckNeverReminds) {
  updater().willHandleShowingUpdate(false, "1.1", true);
  EXPECT_FALSE(isReminderThere());
  updater().willHandleShowingUpdate(false, "1.1", false);
  updater().willHandleShowingUpdate(true, "1.1", true);
  EXPECT_TRUE(isReminderThere());
}

TEST_F(SparkleUpdaterTest, TheReminderSaysWhatThereIs) {
  updater().willHandleShowingUpdate(false, "1.1", false);
  const auto& notification = mac.notifications.delivered.at(reminder);
  EXPECT_EQ(notification.title, "Keyrow update available");
  EXPECT_EQ(notification.body, "Version 1.1 is ready to review and install.");
}

TEST_F(SparkleUpdaterTest, ANewReminderIsPostedAfterTheOldOneIsRemoved) {
  mac.trace.start();
  updater().willHandleShowingUpdate(false, "1.1", false);
  updater().willHandleShowingUpdate(false, "1.2", false);
  EXPECT_THAT(mac.trace.take(),
              ElementsAre("remove pending notification", "remove delivered notification",
                          "add-notification", "remove pending notification",
                          "remove delivered notification", "add-notification"));
  EXPECT_EQ(mac.notifications.delivered.size(), 1U);
}

TEST_F(SparkleUpdaterTest, OnlyTheReminderIsPresentedInTheForeground) {
  EXPECT_EQ(updater().willPresentNotification(reminder), NotificationPresentation::soundListBanner);
  EXPECT_EQ(updater().willPresentNotification("com.example.other"), NotificationPresentation::none);
}

TEST_F(SparkleUpdaterTest, AResponseToTheReminderShowsTheSettingsChecksAndCompletes) {
  updater().willHandleShowingUpdate(false, "1.1", false);
  mac.trace.start();
  updater().didReceiveNotificationResponse(reminder, [this] { mac.trace.add("completed"); });
  EXPECT_THAT(mac.trace.take(),
              ElementsAre("remove pending notification", "remove delivered notification",
                          "activate all windows", "activate ignoring other apps",
                          "bring settings window to the front", "check for updates", "completed"));
}

TEST_F(SparkleUpdaterTest, AResponseToAnotherNotificationOnlyCompletes) {
  mac.trace.start();
  updater().didReceiveNotificationResponse("other", [this] { mac.trace.add("completed"); });
  EXPECT_THAT(mac.trace.take(), ElementsAre("completed"));
}

TEST_F(SparkleUpdaterTest, WithoutAUsableFeedAnAlertSaysSo) {
  for (const std::optional<PropertyValue>& feed : std::vector<std::optional<PropertyValue>>{
           std::nullopt, "", 7, true, "not a url", PropertyDictionary{}}) {
    mac.infoDictionary.erase("SUFeedURL");
    if (feed) mac.infoDictionary.emplace("SUFeedURL", *feed);
    const auto before = mac.screen.alerts().size();
    EXPECT_FALSE(updater().shouldPromptForPermissionToCheck());
    mac.trace.start();
    updater().checkForUpdates();
    EXPECT_EQ(mac.screen.alerts().size(), before + 1);
    EXPECT_THAT(mac.trace.take(), ElementsAre());
  }
  EXPECT_EQ(mac.screen.alerts().front(),
            "Sparkle feed not configured\nSet SUFeedURL in Info.plist to enable updates.\n[OK]");
}

TEST_F(SparkleUpdaterTest, TheSwitchReachesSparkleAndTheDefaults) {
  updater().willHandleShowingUpdate(false, "1.1", false);
  updater().setAutomaticChecksEnabled(true);
  EXPECT_TRUE(isReminderThere());
  EXPECT_EQ(stored("SUEnableAutomaticChecks"), PropertyValue{true});
  updater().setAutomaticChecksEnabled(false);
  EXPECT_FALSE(updater().automaticChecksEnabled());
  EXPECT_FALSE(isReminderThere());
  EXPECT_EQ(stored("SUEnableAutomaticChecks"), PropertyValue{false});
}

TEST_F(SparkleUpdaterTest, AFailedPostIsLogged) {
  mac.faults.fail(PortCall::addNotification, 1);
  updater().willHandleShowingUpdate(false, "1.1", false);
  EXPECT_EQ(logLines().back(),
            "app error: Failed to post Sparkle update reminder notification: Notifications are not "
            "allowed for this application");
}

}  // namespace
}  // namespace keyrow::sim
