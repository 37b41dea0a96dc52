#pragma once

#include <string>

#include "platform/UpdateFramework.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Sparkle, and what the update feed has for it.
class SimulatedUpdateFramework final : public UpdateFramework {
 public:
  explicit SimulatedUpdateFramework(const ProcessContext& context) : context_{context} {}

  void start(UpdateFrameworkDelegate& delegate) override;
  void checkForUpdates() override;
  /// Sparkle keeps the switch in the application's user defaults. Where it was never touched it is
  /// what Info.plist says under the same key, and off where that says nothing.
  bool automaticallyChecksForUpdates() override;
  void setAutomaticallyChecksForUpdates(bool checks) override;

  /// A scheduled check finds an update, while Keyrow is in immediate focus or not.
  void findUpdate(const std::string& version, bool inImmediateFocus);
  /// The user looks at an update in Sparkle's window.
  void attendToUpdate();
  /// The update was installed, skipped or put off.
  void finishSession();

 private:
  void askForPermission();
  /// Where checks are on, the next one is going to be scheduled.
  void scheduleCheck();
  /// Of the user in whose session it runs.
  std::string domain() const {
    return Sessions::domain(context_.user, context_.bundleIdentifier.value_or(""));
  }

  const ProcessContext& context_;
  UpdateFrameworkDelegate* delegate_ = nullptr;
};

}  // namespace keyrow::sim
