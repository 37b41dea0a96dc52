#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/Port.h"

namespace keyrow {

/// A mail to be composed.
struct Mail {
  std::string recipient;
  std::string subject;
  std::string body;
  /// The path of a file to attach; absent for none.
  std::optional<std::string> attachment;
};

/// A service that lets the user compose a mail (`NSSharingService`). It has to live as long
/// as the user edits the draft.
class MailService : public Port {
 public:
  /// Whether it can take this mail (`canPerformWithItems:`).
  virtual bool canPerform(const Mail& mail) = 0;
  /// Opens the draft (`performWithItems:`).
  virtual void perform(const Mail& mail) = 0;
};

/// Where mails are composed.
class MailComposer : public Port {
 public:
  /// The service named `NSSharingServiceNameComposeEmail`; null when there is none.
  virtual std::unique_ptr<MailService> composeEmailService() = 0;
};

}  // namespace keyrow
