#include "input/Permissions.h"

#include <utility>

namespace keyrow {

MissingPermission Permissions::missing() {
  if (!use_.accessibility.isProcessTrusted()) return MissingPermission::accessibility;
  const bool isDenied = use_.inputMonitoring.access() == InputMonitoringAccess::denied;
  return isDenied ? MissingPermission::inputMonitoring : MissingPermission::none;
}

bool Permissions::isProcessTrusted() {
  const bool isTrusted = use_.accessibility.isProcessTrusted();
  use_.notificationCenter.post(permissionsWereLookedAt);
  return isTrusted;
}

InputMonitoringAccess Permissions::access() {
  const auto access = use_.inputMonitoring.access();
  use_.notificationCenter.post(permissionsWereLookedAt);
  return access;
}

Registration Permissions::requestAccess(std::function<void()> answered) {
  return use_.inputMonitoring.requestAccess(std::move(answered));
}

}  // namespace keyrow
