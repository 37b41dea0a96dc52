#include "platform/macos/MacPlatform.h"

namespace keyrow::macos {

Platform MacPlatform::platform() {
  return {.accessibility = accessibility,
          .alerts = alerts,
          .application = application,
          .bundle = bundle,
          .clock = clock,
          .distributedNotificationCenter = distributedNotificationCenter,
          .eventMonitors = eventMonitors,
          .eventPoster = eventPoster,
          .eventTaps = eventTaps,
          .files = files,
          .globalPreferences = globalPreferences,
          .hidManagers = hidManagers,
          .hidSystem = hidSystem,
          .loginItem = loginItem,
          .mailComposer = mailComposer,
          .mainQueue = mainQueue,
          .mainRunLoop = mainRunLoop,
          .notificationCenter = notificationCenter,
          .process = process,
          .systemLog = systemLog,
          .text = text,
          .updateFramework = updateFramework,
          .userDefaults = userDefaults,
          .userNotifications = userNotifications,
          .workspace = workspace};
}

}  // namespace keyrow::macos
