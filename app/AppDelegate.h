#pragma once

#include <optional>
#include <string>

#include "core/FnStateController.h"
#include "core/ModePolicy.h"
#include "core/StoredFnStates.h"
#include "input/KeyboardSourceMonitor.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Starts and stops what Keyrow is made of, and follows the frontmost application.
/// Main thread only.
class AppDelegate {
 public:
  AppDelegate(ModePolicy& modePolicy, FnStateController& fnStateController,
              const StoredFnStates& storedFnStates, KeyboardSourceMonitor& keyboardSourceMonitor,
              Workspace& workspace)
      : modePolicy_{modePolicy},
        fnStateController_{fnStateController},
        storedFnStates_{storedFnStates},
        keyboardSourceMonitor_{keyboardSourceMonitor},
        workspace_{workspace} {}

  /// The launch sequence (`applicationDidFinishLaunching:`).
  void applicationDidFinishLaunching();

  /// The termination sequence (`applicationWillTerminate:`): leaves the keyboard, and
  /// the system preference, in the user's global mode.
  void applicationWillTerminate();

 private:
  void handleApplicationActivation();
  void syncAfterLeavingSystemSettings();
  void syncFromHardware();

  ModePolicy& modePolicy_;
  FnStateController& fnStateController_;
  const StoredFnStates& storedFnStates_;
  KeyboardSourceMonitor& keyboardSourceMonitor_;
  Workspace& workspace_;

  /// The application that was frontmost at the last activation, or at launch.
  std::optional<std::string> lastActivatedBundleIdentifier;
  ObserverToken activationObserver;
};

}  // namespace keyrow
