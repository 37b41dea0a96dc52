#pragma once

#include <functional>
#include <utility>

#include "platform/Application.h"
#include "platform/NotificationCenter.h"
#include "sim/ports/ProcessContext.h"
#include "sim/ports/SimulatedSettingsWindowView.h"

namespace keyrow::sim {

/// A process as an application.
class SimulatedApplication final : public Application {
 public:
  /// `terminate` runs the process's termination sequence and ends it.
  SimulatedApplication(const ProcessContext& context, NotificationCenter& notificationCenter,
                       SimulatedSettingsWindowView& settingsWindow,
                       std::function<void()> terminate);

  /// Whether that makes an application active that has no icon in the Dock is up to the one that
  /// is. It does not here.
  void activateAllWindows() override { context_.mac.trace.add("activate all windows"); }
  void activateIgnoringOtherApps() override {
    context_.mac.trace.add("activate ignoring other apps");
    becomeActive();
  }
  void terminate() override { terminate_(); }

  /// Its windows are gone, and it is not the active one, until it becomes active again.
  void hide();

 private:
  void becomeActive();
  void noteActivation();

  const ProcessContext& context_;
  NotificationCenter& notificationCenter_;
  SimulatedSettingsWindowView& settingsWindow_;
  const std::function<void()> terminate_;
  bool isActive_ = false;
  Registration activations_;
};

}  // namespace keyrow::sim
