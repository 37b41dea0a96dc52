#include "app/Keyrow.h"

namespace keyrow {

Keyrow::Keyrow(const Platform& platform)
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
      appDelegate_{modePolicy_, fnStateController_, storedFnStates_, keyboardSourceMonitor_,
                   platform.workspace} {}

}  // namespace keyrow
