#include "app/Keyrow.h"

namespace keyrow {

Keyrow::Keyrow(const Platform& platform, const Views& views)
    : diagnosticsLog_{platform.systemLog, platform.bundle, platform.clock, platform.text},
      settings_{platform.userDefaults, platform.notificationCenter, platform.text},
      storedFnStates_{platform.userDefaults},
      fnStateController_{platform.hidSystem, platform.globalPreferences, storedFnStates_,
                         diagnosticsLog_.logger(LogCategory::state)},
      modePolicy_{fnStateController_, storedFnStates_,
                  settings_,          platform.workspace,
                  platform.mainQueue, diagnosticsLog_.logger(LogCategory::state)},
      keyboardSourceMonitor_{platform.hidManagers,
                             platform.notificationCenter,
                             platform.clock,
                             platform.text,
                             settings_,
                             diagnosticsLog_.logger(LogCategory::hardware)},
      settingsWindowController_{views.settingsWindow, platform.application, platform.mainQueue},
      statusBarController_{
          views.statusItem,          modePolicy_,        storedFnStates_,    settings_,
          settingsWindowController_, platform.hidSystem, platform.workspace, platform.application,
          platform.mainQueue},
      instanceTakeover_{{.modePolicy = modePolicy_,
                         .fnStateController = fnStateController_,
                         .storedFnStates = storedFnStates_,
                         .application = platform.application,
                         .bundle = platform.bundle,
                         .clock = platform.clock,
                         .distributedNotificationCenter = platform.distributedNotificationCenter,
                         .mainRunLoop = platform.mainRunLoop,
                         .process = platform.process,
                         .workspace = platform.workspace,
                         .appLog = diagnosticsLog_.logger(LogCategory::app)}},
      appDelegate_{{.modePolicy = modePolicy_,
                    .fnStateController = fnStateController_,
                    .storedFnStates = storedFnStates_,
                    .settings = settings_,
                    .keyboardSourceMonitor = keyboardSourceMonitor_,
                    .statusBarController = statusBarController_,
                    .settingsWindowController = settingsWindowController_,
                    .instanceTakeover = instanceTakeover_,
                    .accessibility = platform.accessibility,
                    .alerts = platform.alerts,
                    .notificationCenter = platform.notificationCenter,
                    .workspace = platform.workspace}} {}

}  // namespace keyrow
