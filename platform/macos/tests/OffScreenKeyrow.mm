#include "platform/macos/tests/OffScreenKeyrow.h"

#include "platform/macos/tests/Eventually.h"

namespace keyrow::macos {

bool OffScreenKeyrow::selectTab(NSInteger index) {
  // One pane fades into the other.
  constexpr NSTimeInterval transitionTime = 0.5;
  NSView* const pane = index == 0 ? general().view : about().view;
  tabs().selectedTabViewItemIndex = index;
  NSDate* const transitionEnd = [NSDate dateWithTimeIntervalSinceNow:transitionTime];
  const bool isThere =
      eventually([&] { return transitionEnd.timeIntervalSinceNow < 0 && pane.window == window(); });
  layOut();
  return isThere;
}

Platform OffScreenKeyrow::platform() {
  const auto real = mac_.platform();
  return {.accessibility = accessibility,
          .alerts = alerts,
          .application = application,
          .bundle = real.bundle,
          .clock = real.clock,
          .distributedNotificationCenter = real.distributedNotificationCenter,
          .eventMonitors = real.eventMonitors,
          .eventPoster = real.eventPoster,
          .eventTaps = real.eventTaps,
          .files = files,
          .globalPreferences = real.globalPreferences,
          .hidManagers = real.hidManagers,
          .hidSystem = real.hidSystem,
          .inputMonitoring = inputMonitoring,
          .loginItem = loginItem,
          .mailComposer = mailComposer,
          .mainQueue = real.mainQueue,
          .mainRunLoop = real.mainRunLoop,
          .notificationCenter = real.notificationCenter,
          .process = real.process,
          .systemLog = real.systemLog,
          .text = real.text,
          .updateFramework = updateFramework,
          .userDefaults = *userDefaults_,
          .userNotifications = userNotifications,
          .workspace = workspace};
}

}  // namespace keyrow::macos
