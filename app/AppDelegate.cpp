#include "app/AppDelegate.h"

#include <utility>

namespace keyrow {

namespace {

bool isSystemSettings(const std::optional<std::string>& bundleIdentifier) {
  return bundleIdentifier == "com.apple.systempreferences" ||
         bundleIdentifier == "com.apple.SystemSettings";
}

}  // namespace

void AppDelegate::applicationDidFinishLaunching() {
  modePolicy_.pruneLocalFnStates();
  keyboardSourceMonitor_.startMonitoring();
  lastActivatedBundleIdentifier = workspace_.frontmostBundleIdentifier();
  activationObserver = workspace_.observeActivation([this] { handleApplicationActivation(); });
  modePolicy_.applyStoredFnState();
}

void AppDelegate::applicationWillTerminate() {
  modePolicy_.restoreGlobalFnState();
  keyboardSourceMonitor_.stopMonitoring();
  modePolicy_.pruneLocalFnStates();
  fnStateController_.persistStoredGlobalFnState(FnStatePersistReason::applicationTermination);
}

void AppDelegate::handleApplicationActivation() {
  syncAfterLeavingSystemSettings();
  syncFromHardware();
  modePolicy_.applyStoredFnState();
}

void AppDelegate::syncAfterLeavingSystemSettings() {
  const auto frontmost = workspace_.frontmostBundleIdentifier();
  const auto previous = std::exchange(lastActivatedBundleIdentifier, frontmost);
  if (!isSystemSettings(previous) || isSystemSettings(frontmost)) return;
  if (const auto hardware = modePolicy_.currentFnState()) {
    modePolicy_.syncStoredGlobalFnState(*hardware, false,
                                        "from hardware after leaving System Settings");
  }
}

void AppDelegate::syncFromHardware() {
  // While an override is in force the hardware holds the override's mode.
  if (modePolicy_.isLocalScopeActive()) return;
  const auto hardware = modePolicy_.currentFnState();
  if (hardware && hardware != storedFnStates_.global()) {
    modePolicy_.syncStoredGlobalFnState(*hardware, false, "from hardware during app switch");
  }
}

}  // namespace keyrow
