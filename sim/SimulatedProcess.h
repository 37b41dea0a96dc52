#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/Keyrow.h"
#include "core/AppIdentifier.h"
#include "platform/Platform.h"
#include "sim/SimulatedBundle.h"
#include "sim/SimulatedClock.h"
#include "sim/SimulatedGlobalPreferences.h"
#include "sim/SimulatedHidManagers.h"
#include "sim/SimulatedHidSystem.h"
#include "sim/SimulatedMac.h"
#include "sim/SimulatedMainQueue.h"
#include "sim/SimulatedNotificationCenter.h"
#include "sim/SimulatedSystemLog.h"
#include "sim/SimulatedText.h"
#include "sim/SimulatedUserDefaults.h"
#include "sim/SimulatedWorkspace.h"

namespace keyrow::sim {

/// One process on the machine, with its ports and its Keyrow. Destroying it without
/// `terminate` is what `kill -9` does.
class SimulatedProcess {
 public:
  /// A process of the bundle with this identifier, or of none; nothing is launched yet.
  SimulatedProcess(SimulatedMac& mac, OpenHandles::ProcessID processID,
                   const std::optional<std::string>& bundleIdentifier = std::string{appIdentifier});

  OpenHandles::ProcessID processID() const { return processID_; }
  const Platform& platform() const { return platform_; }
  Keyrow& keyrow() { return keyrow_; }

  /// Runs Keyrow's launch sequence.
  void launch() { keyrow_.appDelegate().applicationDidFinishLaunching(); }

  /// Runs Keyrow's termination sequence, as when the user quits.
  void terminate() { keyrow_.appDelegate().applicationWillTerminate(); }

 private:
  const OpenHandles::ProcessID processID_;
  SimulatedBundle bundle;
  SimulatedClock clock;
  SimulatedGlobalPreferences globalPreferences;
  SimulatedHidManagers hidManagers;
  SimulatedHidSystem hidSystem;
  SimulatedMainQueue mainQueue;
  SimulatedNotificationCenter notificationCenter;
  SimulatedSystemLog systemLog;
  SimulatedText text;
  SimulatedUserDefaults userDefaults;
  SimulatedWorkspace workspace;
  Platform platform_;
  Keyrow keyrow_;
};

}  // namespace keyrow::sim
