#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/MailComposer.h"

namespace keyrow::sim {

/// What the machine's mail service can do, and the drafts that it opened.
struct Mailbox {
  enum class Service { works, missing, refuses };

  Service service = Service::works;
  std::vector<Mail> drafts;
};

}  // namespace keyrow::sim
