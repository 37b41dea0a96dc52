#pragma once

#include <string_view>

#include "platform/Workspace.h"

namespace keyrow {

/// Posted in the process when Keyrow has noticed that it got the Accessibility permission, or
/// has lost it.
inline constexpr std::string_view accessibilityTrustDidChange = "AccessibilityTrustDidChange";

/// Opens the Accessibility pane of System Settings, whichever of its URLs this macOS
/// knows; does nothing when it knows none.
void openAccessibilitySettings(Workspace& workspace);

}  // namespace keyrow
