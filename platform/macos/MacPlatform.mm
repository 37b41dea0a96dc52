#include "platform/macos/MacPlatform.h"

namespace keyrow::macos {

Platform MacPlatform::platform() {
  return {.accessibility = accessibility,
          .alerts = alerts,
          .application = application,
          .bundle = bundle,
          .clock = clock,
          .distributedNotificationCenter = distributedNotificationCenter,
          .eventPoster = eventPoster,
          .eventTaps = eventTaps,
          .globalPreferences = globalPreferences,
          .hidManagers = hidManagers,
          .hidSystem = hidSystem,
          .mainQueue = mainQueue,
          .mainRunLoop = mainRunLoop,
          .notificationCenter = notificationCenter,
          .process = process,
          .systemLog = systemLog,
          .text = text,
          .userDefaults = userDefaults,
          .workspace = workspace};
}

}  // namespace keyrow::macos
