#include "sim/SimulatedApplication.h"

namespace keyrow::sim {

void SimulatedApplication::becomeActive() {
  // It takes the window server a moment.
  auto& mac = context_.mac;
  mac.scheduler.schedule(Scheduler::Duration{0}, [this, &mac, thread = context_.mainThread,
                                                  identifier = context_.bundleIdentifier] {
    if (thread->hasEnded() || mac.applications.frontmost() == identifier) return;
    mac.applications.activate(identifier);
    thread->deliver([this] { notificationCenter_.post(applicationDidBecomeActive); });
  });
}

}  // namespace keyrow::sim
