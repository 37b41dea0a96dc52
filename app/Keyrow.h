#pragma once

#include "app/AppDelegate.h"
#include "app/DiagnosticsLog.h"
#include "core/AppSettings.h"
#include "core/FnStateController.h"
#include "core/ModePolicy.h"
#include "core/StoredFnStates.h"
#include "input/KeyboardSourceMonitor.h"
#include "platform/Platform.h"

namespace keyrow {

/// The composition root: all long-lived objects of one process, made in the order of
/// their dependencies and kept as long as the process lives.
class Keyrow {
 public:
  explicit Keyrow(const Platform& platform);

  DiagnosticsLog& diagnosticsLog() { return diagnosticsLog_; }
  AppSettings& settings() { return settings_; }
  FnStateController& fnStateController() { return fnStateController_; }
  ModePolicy& modePolicy() { return modePolicy_; }
  KeyboardSourceMonitor& keyboardSourceMonitor() { return keyboardSourceMonitor_; }
  AppDelegate& appDelegate() { return appDelegate_; }

 private:
  DiagnosticsLog diagnosticsLog_;
  AppSettings settings_;
  StoredFnStates storedFnStates_;
  FnStateController fnStateController_;
  ModePolicy modePolicy_;
  KeyboardSourceMonitor keyboardSourceMonitor_;
  AppDelegate appDelegate_;
};

}  // namespace keyrow
