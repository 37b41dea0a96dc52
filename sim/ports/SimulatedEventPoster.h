#pragma once

#include "platform/EventPoster.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Events that one process synthesises.
class SimulatedEventPoster final : public EventPoster {
 public:
  explicit SimulatedEventPoster(const ProcessContext& context) : context_{context} {}

  void post(const SystemDefinedEvent& event) override;
  std::unique_ptr<KeyEventSource> createKeyEventSource() override;

 private:
  const ProcessContext& context_;
};

}  // namespace keyrow::sim
