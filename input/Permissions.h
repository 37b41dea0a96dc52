#pragma once

#include <functional>
#include <string_view>

#include "platform/Accessibility.h"
#include "platform/InputMonitoring.h"
#include "platform/NotificationCenter.h"

namespace keyrow {

/// Posted in the process whenever Keyrow has looked at one of its permissions.
inline constexpr std::string_view permissionsWereLookedAt = "PermissionsWereLookedAt";

/// Which permission the user has to give next. Whoever has not been asked for Input Monitoring yet
/// will be, so that does not count as missing.
enum class MissingPermission { none, accessibility, inputMonitoring };

/// The two permissions, as all of Keyrow looks at them: after each look `permissionsWereLookedAt`
/// is posted, so that what is shown is never older. Main thread only.
class Permissions final : public Accessibility, public InputMonitoring {
 public:
  struct Uses {
    Accessibility& accessibility;
    InputMonitoring& inputMonitoring;
    NotificationCenter& notificationCenter;
  };

  explicit Permissions(const Uses& uses) : use_{uses} {}

  /// Looks at both, and posts nothing: for those who show it.
  MissingPermission missing();

  bool isProcessTrusted() override;
  void promptForTrust() override { use_.accessibility.promptForTrust(); }
  InputMonitoringAccess access() override;
  Registration requestAccess(std::function<void()> answered) override;

 private:
  const Uses use_;
};

}  // namespace keyrow
