#pragma once

#include "platform/Port.h"

namespace keyrow {

/// The application as a login item (`SMAppService.mainAppService`).
class LoginItem : public Port {
 public:
  /// Whether the status is "enabled" (`SMAppServiceStatusEnabled`).
  virtual bool isEnabled() = 0;

  /// `registerAndReturnError:` and `unregisterAndReturnError:`; whether it worked shows in
  /// the status.
  virtual void registerItem() = 0;
  virtual void unregisterItem() = 0;
};

}  // namespace keyrow
