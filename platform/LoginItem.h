#pragma once

#include "platform/Port.h"

namespace keyrow {

/// What macOS makes of the login item (`SMAppServiceStatus`).
enum class LoginItemStatus {
  /// It is not registered, or cannot be found.
  notRegistered,
  enabled,
  /// It is registered, and the user has yet to allow it in System Settings, or has forbidden it
  /// there.
  requiresApproval,
};

/// The application as a login item (`SMAppService.mainAppService`).
class LoginItem : public Port {
 public:
  virtual LoginItemStatus status() = 0;

  /// `registerAndReturnError:` and `unregisterAndReturnError:`; whether it worked shows in
  /// the status.
  virtual void registerItem() = 0;
  virtual void unregisterItem() = 0;

  /// Opens the page of System Settings where login items are allowed
  /// (`openSystemSettingsLoginItems`).
  virtual void openSystemSettings() = 0;
};

}  // namespace keyrow
