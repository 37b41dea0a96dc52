#include "ui/SparkleUpdater.h"

#include "core/AppIdentifier.h"
#include "core/AppSettings.h"
#include "platform/SystemError.h"

namespace keyrow {

namespace {

std::string updateReminderNotificationIdentifier() {
  return std::string{appIdentifier} + ".sparkle-update-reminder";
}

}  // namespace

void SparkleUpdater::start() {
  use_.userNotifications.setDelegate(*this);
  use_.updateFramework.start(*this);
}

void SparkleUpdater::checkForUpdates() {
  if (!hasFeed()) {
    use_.alerts.runModal({.messageText = "Sparkle feed not configured",
                          .informativeText = "Set SUFeedURL in Info.plist to enable updates.",
                          .buttons = {"OK"},
                          .preventsTermination = false},
                         [](int /*response*/) {});
    return;
  }
  removeUpdateReminder();
  use_.updateFramework.checkForUpdates();
}

void SparkleUpdater::setAutomaticChecksEnabled(bool enabled) {
  use_.updateFramework.setAutomaticallyChecksForUpdates(enabled);
  use_.userDefaults.setObject(settingsKey::SUEnableAutomaticChecks, enabled);
  if (!enabled) removeUpdateReminder();
}

void SparkleUpdater::removeUpdateReminder() {
  use_.userNotifications.removePending(updateReminderNotificationIdentifier());
  use_.userNotifications.removeDelivered(updateReminderNotificationIdentifier());
}

void SparkleUpdater::willScheduleUpdateCheck() {
  if (hasRequestedNotificationAuthorization_) return;
  hasRequestedNotificationAuthorization_ = true;
  use_.userNotifications.requestAuthorization(
      [&log = use_.appLog](bool granted, const std::optional<SystemError>& error) {
        if (error) {
          log.error("Failed to request notification authorization for Sparkle update reminders: " +
                    errorText(*error));
          return;
        }
        log.notice(std::string{"Sparkle update reminder notifications authorization granted="} +
                   (granted ? "true" : "false") + ".");
      });
}

void SparkleUpdater::willHandleShowingUpdate(bool handlesShowing, const std::string& displayVersion,
                                             bool isUserInitiated) {
  if (isUserInitiated) return;
  if (handlesShowing) {
    removeUpdateReminder();
  } else {
    postUpdateReminder(displayVersion);
  }
}

NotificationPresentation SparkleUpdater::willPresentNotification(std::string_view identifier) {
  return identifier == updateReminderNotificationIdentifier()
             ? NotificationPresentation::soundListBanner
             : NotificationPresentation::none;
}

void SparkleUpdater::didReceiveNotificationResponse(const std::string& identifier,
                                                    std::function<void()> completed) {
  if (identifier == updateReminderNotificationIdentifier()) {
    removeUpdateReminder();
    use_.settingsWindowController.show();
    use_.updateFramework.checkForUpdates();
  }
  completed();
}

bool SparkleUpdater::hasFeed() {
  const auto value = use_.bundle.infoValue("SUFeedURL");
  const auto* text = value ? value->string() : nullptr;
  return text && !text->empty() && use_.workspace.isURL(*text);
}

void SparkleUpdater::postUpdateReminder(const std::string& displayVersion) {
  // A newer reminder takes the place of the old one.
  removeUpdateReminder();
  use_.userNotifications.add(
      {.identifier = updateReminderNotificationIdentifier(),
       .title = "Keyrow update available",
       .body = "Version " + displayVersion + " is ready to review and install."},
      [&log = use_.appLog](const std::optional<SystemError>& error) {
        if (!error) return;
        log.error("Failed to post Sparkle update reminder notification: " + errorText(*error));
      });
}

}  // namespace keyrow
