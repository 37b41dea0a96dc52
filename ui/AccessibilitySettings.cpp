#include "ui/AccessibilitySettings.h"

#include <array>
#include <string_view>

namespace keyrow {

void openAccessibilitySettings(Workspace& workspace) {
  constexpr std::array<std::string_view, 2> urls{
      "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility",
      "x-apple.systempreferences:com.apple.settings.PrivacySecurity_Accessibility"};
  for (const auto url : urls) {
    if (workspace.openURL(url)) return;
  }
}

}  // namespace keyrow
