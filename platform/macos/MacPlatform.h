#pragma once

#include "platform/Platform.h"
#include "platform/macos/MacAccessibility.h"
#include "platform/macos/MacAlerts.h"
#include "platform/macos/MacApplication.h"
#include "platform/macos/MacBundle.h"
#include "platform/macos/MacClock.h"
#include "platform/macos/MacDistributedNotificationCenter.h"
#include "platform/macos/MacEventMonitors.h"
#include "platform/macos/MacEventPoster.h"
#include "platform/macos/MacEventTaps.h"
#include "platform/macos/MacFiles.h"
#include "platform/macos/MacGlobalPreferences.h"
#include "platform/macos/MacHidManagers.h"
#include "platform/macos/MacHidSystem.h"
#include "platform/macos/MacInputMonitoring.h"
#include "platform/macos/MacLoginItem.h"
#include "platform/macos/MacMailComposer.h"
#include "platform/macos/MacMainQueue.h"
#include "platform/macos/MacMainRunLoop.h"
#include "platform/macos/MacNotificationCenter.h"
#include "platform/macos/MacProcess.h"
#include "platform/macos/MacSystemLog.h"
#include "platform/macos/MacText.h"
#include "platform/macos/MacUpdateFramework.h"
#include "platform/macos/MacUserDefaults.h"
#include "platform/macos/MacUserNotifications.h"
#include "platform/macos/MacWorkspace.h"

namespace keyrow::macos {

/// All ports on Apple's frameworks.
class MacPlatform {
 public:
  /// Refers to this object, which has to outlive it.
  Platform platform();

 private:
  MacAccessibility accessibility_;
  MacAlerts alerts_;
  MacApplication application_;
  MacBundle bundle_;
  MacClock clock_;
  MacDistributedNotificationCenter distributedNotificationCenter_;
  MacEventMonitors eventMonitors_;
  MacEventPoster eventPoster_;
  MacEventTaps eventTaps_;
  MacFiles files_;
  MacGlobalPreferences globalPreferences_;
  MacHidManagers hidManagers_;
  MacHidSystem hidSystem_;
  MacInputMonitoring inputMonitoring_;
  MacLoginItem loginItem_;
  MacMailComposer mailComposer_;
  MacMainQueue mainQueue_;
  MacMainRunLoop mainRunLoop_;
  MacNotificationCenter notificationCenter_;
  MacProcess process_;
  MacSystemLog systemLog_;
  MacText text_;
  MacUpdateFramework updateFramework_;
  MacUserDefaults userDefaults_;
  MacUserNotifications userNotifications_;
  MacWorkspace workspace_;
};

}  // namespace keyrow::macos
