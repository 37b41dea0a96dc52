#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/Alerts.h"
#include "platform/Bundle.h"
#include "platform/SystemLog.h"
#include "platform/UpdateFramework.h"
#include "platform/UserDefaults.h"
#include "platform/UserNotifications.h"
#include "platform/Workspace.h"
#include "ui/SettingsWindowController.h"

namespace keyrow {

/// Software update: checks on request, and reminds gently of what a scheduled check has
/// found, by a notification instead of a window. Main thread only.
class SparkleUpdater final : public UpdateFrameworkDelegate, public UserNotificationsDelegate {
 public:
  /// What it uses. `appLog` is the logger of the "app" category.
  struct Uses {
    UpdateFramework& updateFramework;
    UserNotifications& userNotifications;
    UserDefaults& userDefaults;
    Bundle& bundle;
    Alerts& alerts;
    Workspace& workspace;
    SettingsWindowController& settingsWindowController;
    Logger& appLog;
  };

  explicit SparkleUpdater(const Uses& uses) : use_{uses} {}

  /// Starts the updater, which checks by its own schedule from now on.
  void start();

  /// Checks at the user's request; without a feed an alert says so instead.
  void checkForUpdates();

  void setAutomaticChecksEnabled(bool enabled);
  bool automaticChecksEnabled() { return use_.updateFramework.automaticallyChecksForUpdates(); }

  /// Takes the reminder back, pending or delivered.
  void removeUpdateReminder();

  /// There is nothing to ask where there is nothing to check.
  bool shouldPromptForPermissionToCheck() override { return hasFeed(); }
  void willScheduleUpdateCheck() override;
  bool supportsGentleScheduledUpdateReminders() const override { return true; }
  bool shouldHandleShowingScheduledUpdate(bool inImmediateFocus) const override {
    return inImmediateFocus;
  }
  void willHandleShowingUpdate(bool handlesShowing, const std::string& displayVersion,
                               bool isUserInitiated) override;
  void didReceiveUserAttentionForUpdate() override { removeUpdateReminder(); }
  void willFinishUpdateSession() override { removeUpdateReminder(); }

  NotificationPresentation willPresentNotification(std::string_view identifier) override;
  void didReceiveNotificationResponse(const std::string& identifier,
                                      std::function<void()> completed) override;

 private:
  bool hasFeed();
  void postUpdateReminder(const std::string& displayVersion);

  const Uses use_;
  /// In this process.
  bool hasRequestedNotificationAuthorization_ = false;
};

}  // namespace keyrow
