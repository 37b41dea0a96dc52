#pragma once

#include "platform/EventMonitors.h"

@class NSEvent;

namespace keyrow::macos {

/// The key that a key-down event tells of.
KeyDown keyDown(NSEvent* event);

}  // namespace keyrow::macos
