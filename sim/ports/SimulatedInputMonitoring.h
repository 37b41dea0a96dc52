#pragma once

#include <memory>
#include <utility>

#include "platform/InputMonitoring.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// The machine's Input Monitoring permission for Keyrow. The thread that waits for an answer needs
/// nothing of the process, so there is none.
class SimulatedInputMonitoring final : public InputMonitoring {
 public:
  explicit SimulatedInputMonitoring(const ProcessContext& context) : context_{context} {}

  InputMonitoringAccess access() override {
    context_.mac.trace.add("check input monitoring");
    return context_.mac.inputMonitoring.access();
  }

  Registration requestAccess(std::function<void()> answered) override {
    context_.mac.trace.add("request input monitoring");
    auto handler = std::make_shared<const std::function<void()>>(std::move(answered));
    // The answer comes by way of the main queue.
    context_.mac.inputMonitoring.ask([&scheduler = context_.mac.scheduler,
                                      thread = context_.mainThread, weak = std::weak_ptr{handler}] {
      scheduler.schedule(Scheduler::Duration{0}, [thread, weak] {
        thread->deliver([weak] {
          if (const auto kept = weak.lock()) (*kept)();
        });
      });
    });
    return Registration{[handler = std::move(handler)] {}};
  }

 private:
  const ProcessContext& context_;
};

}  // namespace keyrow::sim
