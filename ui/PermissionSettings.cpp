#include "ui/PermissionSettings.h"

#include "ui/GeneralLayout.h"

namespace keyrow {

const PermissionSettings& settingsOf(MissingPermission missing) {
  static constexpr PermissionSettings accessibility{
      .buttonTitle = generalLayout::permissionButtonTitle,
      .alertButtonTitle = "Open Accessibility Settings",
      .urls = {"x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility",
               "x-apple.systempreferences:com.apple.settings.PrivacySecurity_Accessibility"}};
  static constexpr PermissionSettings inputMonitoring{
      .buttonTitle = generalLayout::inputMonitoringButtonTitle,
      .alertButtonTitle = "Open Input Monitoring Settings",
      .urls = {"x-apple.systempreferences:com.apple.preference.security?Privacy_ListenEvent",
               "x-apple.systempreferences:com.apple.settings.PrivacySecurity_ListenEvent"}};
  return missing == MissingPermission::inputMonitoring ? inputMonitoring : accessibility;
}

void openPermissionSettings(const PermissionSettings& settings, Workspace& workspace) {
  for (const auto url : settings.urls) {
    if (workspace.openURL(url)) return;
  }
}

}  // namespace keyrow
