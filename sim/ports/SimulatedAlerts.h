#pragma once

#include <functional>
#include <utility>

#include "platform/Alerts.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Alerts of one process on the machine's screen.
class SimulatedAlerts final : public Alerts {
 public:
  explicit SimulatedAlerts(const ProcessContext& context) : context_{context} {}
  ~SimulatedAlerts() override { context_.mac.screen.closeAlertsOf(context_.processID); }

  void runModal(const Alert& alert, std::function<void(int response)> answered) override {
    const bool isFromQueue = context_.mainThread->beginModal();
    context_.mac.screen.showAlert(
        context_.processID, context_.user, alert,
        [thread = context_.mainThread, isFromQueue, answered = std::move(answered)](int response) {
          thread->deliver([thread, isFromQueue, answered, response] {
            answered(response);
            thread->endModal(isFromQueue);
          });
        });
  }
  void beep() override { context_.mac.screen.note("beep"); }

 private:
  const ProcessContext& context_;
};

}  // namespace keyrow::sim
