#pragma once

#include <cstdint>
#include <string>

#include "platform/EventPoster.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// What a media key of this type is called (`NX_KEYTYPE_…`, ev_keymap.h), such as "volume up".
std::string mediaKeyName(std::int64_t keyType);

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
