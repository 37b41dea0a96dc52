#include "platform/macos/MacPlatform.h"

namespace keyrow::macos {

Platform MacPlatform::platform() {
  return {.bundle = bundle,
          .clock = clock,
          .globalPreferences = globalPreferences,
          .hidManagers = hidManagers,
          .hidSystem = hidSystem,
          .mainQueue = mainQueue,
          .notificationCenter = notificationCenter,
          .systemLog = systemLog,
          .text = text,
          .userDefaults = userDefaults,
          .workspace = workspace};
}

}  // namespace keyrow::macos
