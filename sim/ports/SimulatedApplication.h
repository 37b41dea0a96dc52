#pragma once

#include <functional>
#include <utility>

#include "platform/Application.h"
#include "platform/NotificationCenter.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// A process as an application.
class SimulatedApplication final : public Application {
 public:
  /// `terminate` runs the process's termination sequence and ends it.
  SimulatedApplication(const ProcessContext& context, NotificationCenter& notificationCenter,
                       std::function<void()> terminate);

  /// Whether that makes an application active that has no icon in the Dock is up to the one that
  /// is. It does not here.
  void activateAllWindows() override { context_.mac.trace.add("activate all windows"); }
  void activateIgnoringOtherApps() override {
    context_.mac.trace.add("activate ignoring other apps");
    becomeActive();
  }
  void terminate() override { terminate_(); }

 private:
  void becomeActive();
  void noteActivation();

  const ProcessContext& context_;
  NotificationCenter& notificationCenter_;
  const std::function<void()> terminate_;
  bool isActive_ = false;
  Registration activations_;
};

}  // namespace keyrow::sim
