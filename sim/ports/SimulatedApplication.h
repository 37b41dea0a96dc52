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

  void activateAllWindows() override {
    context_.mac.trace.add("activate all windows");
    askToBecomeActive();
  }
  void activate() override {
    context_.mac.trace.add("activate");
    askToBecomeActive();
  }
  void terminate() override { terminate_(); }

 private:
  void askToBecomeActive();
  void noteActivation();

  const ProcessContext& context_;
  NotificationCenter& notificationCenter_;
  const std::function<void()> terminate_;
  bool isActive_ = false;
  Registration activations_;
};

}  // namespace keyrow::sim
