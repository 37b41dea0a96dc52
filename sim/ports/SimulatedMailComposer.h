#pragma once

#include "platform/MailComposer.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// The machine's mail service.
class SimulatedMailComposer final : public MailComposer {
 public:
  explicit SimulatedMailComposer(const ProcessContext& context) : context_{context} {}

  std::unique_ptr<MailService> composeEmailService() override;

 private:
  const ProcessContext& context_;
};

}  // namespace keyrow::sim
