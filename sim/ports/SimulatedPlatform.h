#pragma once

#include <functional>

#include "platform/Platform.h"
#include "sim/ports/ProcessContext.h"
#include "sim/ports/SimulatedAboutView.h"
#include "sim/ports/SimulatedAccessibility.h"
#include "sim/ports/SimulatedAlerts.h"
#include "sim/ports/SimulatedApplication.h"
#include "sim/ports/SimulatedBundle.h"
#include "sim/ports/SimulatedClock.h"
#include "sim/ports/SimulatedDistributedNotificationCenter.h"
#include "sim/ports/SimulatedEventMonitors.h"
#include "sim/ports/SimulatedEventPoster.h"
#include "sim/ports/SimulatedEventTaps.h"
#include "sim/ports/SimulatedFiles.h"
#include "sim/ports/SimulatedGeneralView.h"
#include "sim/ports/SimulatedGlobalPreferences.h"
#include "sim/ports/SimulatedHidManagers.h"
#include "sim/ports/SimulatedHidSystem.h"
#include "sim/ports/SimulatedInputMonitoring.h"
#include "sim/ports/SimulatedLoginItem.h"
#include "sim/ports/SimulatedMailComposer.h"
#include "sim/ports/SimulatedMainMenuView.h"
#include "sim/ports/SimulatedMainQueue.h"
#include "sim/ports/SimulatedMainRunLoop.h"
#include "sim/ports/SimulatedNotificationCenter.h"
#include "sim/ports/SimulatedProcessInfo.h"
#include "sim/ports/SimulatedSettingsWindowView.h"
#include "sim/ports/SimulatedStatusItemView.h"
#include "sim/ports/SimulatedSystemLog.h"
#include "sim/ports/SimulatedText.h"
#include "sim/ports/SimulatedUpdateFramework.h"
#include "sim/ports/SimulatedUserDefaults.h"
#include "sim/ports/SimulatedUserNotifications.h"
#include "sim/ports/SimulatedWorkspace.h"
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
  SimulatedMainMenuView mainMenu;
  SimulatedStatusItemView statusItem;
  SimulatedEventMonitors eventMonitors;
  SimulatedEventTaps eventTaps;
  SimulatedHidManagers hidManagers;
  SimulatedUpdateFramework updateFramework;
  SimulatedUserNotifications userNotifications;

  const Platform& ports() const { return ports_; }
  Views views() {
    return {.about = about,
            .general = general,
            .mainMenu = mainMenu,
            .settingsWindow = settingsWindow,
            .statusItem = statusItem};
  }

 private:
  /// A key that no monitor consumes goes to the main menu, and then to the window.
  void keyDown(const KeyDown& key);

  SimulatedAccessibility accessibility_;
  SimulatedAlerts alerts_;
  SimulatedBundle bundle_;
  SimulatedClock clock_;
  SimulatedDistributedNotificationCenter distributedNotificationCenter_;
  SimulatedEventPoster eventPoster_;
  SimulatedFiles files_;
  SimulatedGlobalPreferences globalPreferences_;
  SimulatedHidSystem hidSystem_;
  SimulatedInputMonitoring inputMonitoring_;
  SimulatedLoginItem loginItem_;
  SimulatedMailComposer mailComposer_;
  SimulatedMainQueue mainQueue_;
  SimulatedMainRunLoop mainRunLoop_;
  SimulatedProcessInfo process_;
  SimulatedSystemLog systemLog_;
  SimulatedText text_;
  SimulatedUserDefaults userDefaults_;
  SimulatedWorkspace workspace_;
  SimulatedNotificationCenter notificationCenter_;
  SimulatedApplication application_;
  Platform ports_;
};

}  // namespace keyrow::sim
