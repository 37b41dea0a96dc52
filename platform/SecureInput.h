#pragma once

#include <optional>
#include <string>

#include "platform/Port.h"

namespace keyrow {

/// Secure input, which keeps every key from event taps, as where a password is typed.
class SecureInput : public Port {
 public:
  /// Whether some application holds it (`IsSecureEventInputEnabled`).
  virtual bool isEnabled() = 0;

  /// The bundle identifier or the name of the application that holds it; absent where macOS does
  /// not tell ("kCGSSessionSecureInputPID" among the I/O registry's "IOConsoleUsers").
  virtual std::optional<std::string> holder() = 0;
};

}  // namespace keyrow
