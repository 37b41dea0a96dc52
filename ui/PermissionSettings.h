#pragma once

#include <array>
#include <string_view>

#include "input/Permissions.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Where the user gives a permission, and what the way there is called.
struct PermissionSettings {
  /// Of the General pane's button.
  std::string_view buttonTitle;
  /// Of an alert's button.
  std::string_view alertButtonTitle;
  /// Of the page in System Settings: what newer versions of macOS call it, and what older ones do.
  std::array<std::string_view, 2> urls;
};

/// Those of the permission that is missing; where none is, those of Accessibility.
const PermissionSettings& settingsOf(MissingPermission missing);

/// Opens the page, by the first URL that this macOS knows; does nothing when it knows none.
void openPermissionSettings(const PermissionSettings& settings, Workspace& workspace);

}  // namespace keyrow
