#include "platform/macos/MacPlatform.h"

namespace keyrow::macos {

Platform MacPlatform::platform() {
  return {.accessibility = *accessibility_,
          .alerts = *alerts_,
          .application = *application_,
          .bundle = *bundle_,
          .clock = *clock_,
          .distributedNotificationCenter = *distributedNotificationCenter_,
          .eventMonitors = *eventMonitors_,
          .eventPoster = *eventPoster_,
          .eventTaps = *eventTaps_,
          .files = *files_,
          .globalPreferences = *globalPreferences_,
          .hidManagers = *hidManagers_,
          .hidSystem = *hidSystem_,
          .inputMonitoring = *inputMonitoring_,
          .loginItem = *loginItem_,
          .mailComposer = *mailComposer_,
          .mainQueue = *mainQueue_,
          .mainRunLoop = *mainRunLoop_,
          .notificationCenter = *notificationCenter_,
          .process = *process_,
          .systemLog = *systemLog_,
          .text = *text_,
          .updateFramework = *updateFramework_,
          .userDefaults = *userDefaults_,
          .userNotifications = *userNotifications_,
          .workspace = *workspace_};
}

}  // namespace keyrow::macos
