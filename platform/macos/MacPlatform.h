#pragma once

#include <memory>

#include "platform/Platform.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

/// All ports on Apple's frameworks.
class MacPlatform {
 public:
  /// Refers to this object, which has to outlive it.
  Platform platform();

 private:
  const std::unique_ptr<Accessibility> accessibility_ = makeAccessibility();
  const std::unique_ptr<Alerts> alerts_ = makeAlerts();
  const std::unique_ptr<Application> application_ = makeApplication();
  const std::unique_ptr<Bundle> bundle_ = makeBundle();
  const std::unique_ptr<Clock> clock_ = makeClock();
  const std::unique_ptr<DistributedNotificationCenter> distributedNotificationCenter_ =
      makeDistributedNotificationCenter();
  const std::unique_ptr<EventMonitors> eventMonitors_ = makeEventMonitors();
  const std::unique_ptr<EventPoster> eventPoster_ = makeEventPoster();
  const std::unique_ptr<EventTaps> eventTaps_ = makeEventTaps();
  const std::unique_ptr<Files> files_ = makeFiles();
  const std::unique_ptr<GlobalPreferences> globalPreferences_ = makeGlobalPreferences();
  const std::unique_ptr<HidManagers> hidManagers_ = makeHidManagers();
  const std::unique_ptr<HidSystem> hidSystem_ = makeHidSystem();
  const std::unique_ptr<InputMonitoring> inputMonitoring_ = makeInputMonitoring();
  const std::unique_ptr<LoginItem> loginItem_ = makeLoginItem();
  const std::unique_ptr<MailComposer> mailComposer_ = makeMailComposer();
  const std::unique_ptr<MainQueue> mainQueue_ = makeMainQueue();
  const std::unique_ptr<MainRunLoop> mainRunLoop_ = makeMainRunLoop();
  const std::unique_ptr<NotificationCenter> notificationCenter_ = makeNotificationCenter();
  const std::unique_ptr<Process> process_ = makeProcess();
  const std::unique_ptr<SystemLog> systemLog_ = makeSystemLog();
  const std::unique_ptr<Text> text_ = makeText();
  const std::unique_ptr<UpdateFramework> updateFramework_ = makeUpdateFramework();
  const std::unique_ptr<UserDefaults> userDefaults_ = makeUserDefaults();
  const std::unique_ptr<UserNotifications> userNotifications_ = makeUserNotifications();
  const std::unique_ptr<Workspace> workspace_ = makeWorkspace();
};

}  // namespace keyrow::macos
