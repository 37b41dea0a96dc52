#pragma once

#include <string>

#include "platform/Port.h"

namespace keyrow {

/// What Sparkle asks and tells (`SPUUpdaterDelegate`, `SPUStandardUserDriverDelegate`).
/// Main thread only.
class UpdateFrameworkDelegate {
 public:
  /// Whether Sparkle may ask the user whether to check by itself
  /// (`updaterShouldPromptForPermissionToCheckForUpdates:`).
  virtual bool shouldPromptForPermissionToCheck() = 0;
  virtual void willScheduleUpdateCheck() = 0;
  virtual bool supportsGentleScheduledUpdateReminders() const = 0;
  virtual bool shouldHandleShowingScheduledUpdate(bool inImmediateFocus) const = 0;
  /// `handlesShowing`: whether Sparkle shows the update itself. `displayVersion` is the
  /// update's `displayVersionString`.
  virtual void willHandleShowingUpdate(bool handlesShowing, const std::string& displayVersion,
                                       bool isUserInitiated) = 0;
  virtual void didReceiveUserAttentionForUpdate() = 0;
  virtual void willFinishUpdateSession() = 0;

 protected:
  ~UpdateFrameworkDelegate() = default;
};

/// Sparkle's standard updater (`SPUStandardUpdaterController`).
class UpdateFramework : public Port {
 public:
  /// Makes the controller, with this delegate for both roles, and starts the updater.
  /// `delegate` has to outlive this.
  virtual void start(UpdateFrameworkDelegate& delegate) = 0;

  /// `checkForUpdates:`.
  virtual void checkForUpdates() = 0;

  /// `automaticallyChecksForUpdates` of the updater.
  virtual bool automaticallyChecksForUpdates() = 0;
  virtual void setAutomaticallyChecksForUpdates(bool checks) = 0;
};

}  // namespace keyrow
