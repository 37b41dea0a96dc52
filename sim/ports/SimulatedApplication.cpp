#include "sim/ports/SimulatedApplication.h"

namespace keyrow::sim {

SimulatedApplication::SimulatedApplication(const ProcessContext& context,
                                           NotificationCenter& notificationCenter,
                                           SimulatedSettingsWindowView& settingsWindow,
                                           std::function<void()> terminate)
    : context_{context},
      notificationCenter_{notificationCenter},
      settingsWindow_{settingsWindow},
      terminate_{std::move(terminate)},
      activations_{context.mac.applications.observeActivation([this] { noteActivation(); })} {}

void SimulatedApplication::hide() {
  settingsWindow_.setApplicationHidden(true);
  if (context_.bundleIdentifier) context_.mac.applications.stepBack(*context_.bundleIdentifier);
}

void SimulatedApplication::becomeActive() {
  // It takes the window server a moment.
  auto& mac = context_.mac;
  mac.scheduler.schedule(Scheduler::Duration{0}, [&mac, thread = context_.mainThread,
                                                  identifier = context_.bundleIdentifier] {
    if (thread->hasEnded() || mac.applications.frontmost() == identifier) return;
    mac.applications.activate(identifier);
  });
}

void SimulatedApplication::noteActivation() {
  const bool wasActive =
      std::exchange(isActive_, context_.mac.applications.frontmost() == context_.bundleIdentifier);
  if (wasActive || !isActive_) return;
  settingsWindow_.setApplicationHidden(false);
  context_.mainThread->deliver([this] { notificationCenter_.post(applicationDidBecomeActive); });
}

}  // namespace keyrow::sim
