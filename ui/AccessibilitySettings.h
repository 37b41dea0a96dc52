#pragma once

#include "platform/Workspace.h"

namespace keyrow {

/// Opens the Accessibility pane of System Settings, whichever of its URLs this macOS
/// knows; does nothing when it knows none.
void openAccessibilitySettings(Workspace& workspace);

}  // namespace keyrow
