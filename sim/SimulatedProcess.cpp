#include "sim/SimulatedProcess.h"

namespace keyrow::sim {

SimulatedProcess::SimulatedProcess(SimulatedMac& mac, OpenHandles::ProcessID processID,
                                   const std::optional<std::string>& bundleIdentifier)
    : processID_{processID},
      bundle{bundleIdentifier},
      clock{mac},
      globalPreferences{mac},
      hidManagers{mac, processID},
      hidSystem{mac, processID},
      mainQueue{mac.scheduler},
      notificationCenter{mac.openHandles, processID},
      systemLog{mac, processID},
      userDefaults{mac, bundleIdentifier.value_or("Keyrow")},
      workspace{mac, processID},
      platform_{bundle,    clock,        globalPreferences,  hidManagers,
                hidSystem, mainQueue,    notificationCenter, systemLog,
                text,      userDefaults, workspace},
      keyrow_{platform_} {}

}  // namespace keyrow::sim
