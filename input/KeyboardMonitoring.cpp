#include "input/KeyboardMonitoring.h"

namespace keyrow {

void KeyboardMonitoring::start() {
  if (hasAnswer()) use_.keyboardSourceMonitor.startMonitoring();
}

void KeyboardMonitoring::permissionsMayHaveChanged() {
  if (hasAnswer()) listen();
}

void KeyboardMonitoring::lookAgain() {
  if (use_.inputMonitoring.access() == InputMonitoringAccess::granted) listen();
}

void KeyboardMonitoring::stop() {
  request_ = {};
  use_.keyboardSourceMonitor.stopMonitoring();
}

void KeyboardMonitoring::listen() {
  use_.keyboardSourceMonitor.startMonitoring();
  use_.capsLockMonitor.applyCapsLockIndicatorSetting();
}

/// Whether the user has said anything yet. Where that is not so, asks.
bool KeyboardMonitoring::hasAnswer() {
  if (use_.inputMonitoring.access() != InputMonitoringAccess::unknown) return true;
  // Without Accessibility that is being asked for, and one question at a time is enough.
  if (!request_ && use_.accessibility.isProcessTrusted()) {
    request_ = use_.inputMonitoring.requestAccess([this] { permissionsMayHaveChanged(); });
  }
  return false;
}

}  // namespace keyrow
