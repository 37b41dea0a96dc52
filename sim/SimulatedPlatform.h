#pragma once

#include <functional>

#include "platform/Platform.h"
#include "sim/ProcessContext.h"
#include "sim/SimulatedAboutView.h"
#include "sim/SimulatedAccessibility.h"
#include "sim/SimulatedAlerts.h"
#include "sim/SimulatedApplication.h"
#include "sim/SimulatedBundle.h"
#include "sim/SimulatedClock.h"
#include "sim/SimulatedDistributedNotificationCenter.h"
#include "sim/SimulatedEventMonitors.h"
#include "sim/SimulatedEventPoster.h"
#include "sim/SimulatedEventTaps.h"
#include "sim/SimulatedFiles.h"
#include "sim/SimulatedGeneralView.h"
#include "sim/SimulatedGlobalPreferences.h"
#include "sim/SimulatedHidManagers.h"
#include "sim/SimulatedHidSystem.h"
#include "sim/SimulatedLoginItem.h"
#include "sim/SimulatedMailComposer.h"
#include "sim/SimulatedMainQueue.h"
#include "sim/SimulatedMainRunLoop.h"
#include "sim/SimulatedNotificationCenter.h"
#include "sim/SimulatedProcessInfo.h"
#include "sim/SimulatedSettingsWindowView.h"
#include "sim/SimulatedStatusItemView.h"
#include "sim/SimulatedSystemLog.h"
#include "sim/SimulatedText.h"
#include "sim/SimulatedUpdateFramework.h"
#include "sim/SimulatedUserDefaults.h"
#include "sim/SimulatedUserNotifications.h"
#include "sim/SimulatedWorkspace.h"
#include "ui/Views.h"

namespace keyrow::sim {

/// The ports and the views of one process on the machine.
class SimulatedPlatform {
 public:
  /// `terminate` is what asking the application to terminate does. `context` has to
  /// outlive this.
  SimulatedPlatform(const ProcessContext& context, std::function<void()> terminate);

  SimulatedGeneralView general;
  SimulatedAboutView about;
  SimulatedSettingsWindowView settingsWindow;
  SimulatedStatusItemView statusItem;
  SimulatedEventMonitors eventMonitors;
  SimulatedEventTaps eventTaps;
  SimulatedUpdateFramework updateFramework;
  SimulatedUserNotifications userNotifications;

  const Platform& ports() const { return ports_; }
  Views views() {
    return {.about = about,
            .general = general,
            .settingsWindow = settingsWindow,
            .statusItem = statusItem};
  }

 private:
  SimulatedAccessibility accessibility;
  SimulatedAlerts alerts;
  SimulatedBundle bundle;
  SimulatedClock clock;
  SimulatedDistributedNotificationCenter distributedNotificationCenter;
  SimulatedEventPoster eventPoster;
  SimulatedFiles files;
  SimulatedGlobalPreferences globalPreferences;
  SimulatedHidManagers hidManagers;
  SimulatedHidSystem hidSystem;
  SimulatedLoginItem loginItem;
  SimulatedMailComposer mailComposer;
  SimulatedMainQueue mainQueue;
  SimulatedMainRunLoop mainRunLoop;
  SimulatedProcessInfo process;
  SimulatedSystemLog systemLog;
  SimulatedText text;
  SimulatedUserDefaults userDefaults;
  SimulatedWorkspace workspace;
  SimulatedNotificationCenter notificationCenter;
  SimulatedApplication application;
  Platform ports_;
};

}  // namespace keyrow::sim
