#pragma once

#include "platform/MailComposer.h"

namespace keyrow::macos {

/// `MailComposer` on `NSSharingService`.
class MacMailComposer final : public MailComposer {
 public:
  std::unique_ptr<MailService> composeEmailService() override;
};

}  // namespace keyrow::macos
