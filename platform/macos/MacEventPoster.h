#pragma once

#import <AppKit/AppKit.h>

#include <cstdint>

#include "platform/EventPoster.h"
#include "platform/macos/CFRef.h"

namespace keyrow::macos {

/// The event as AppKit makes it, now; nil when it cannot.
NSEvent* nsEvent(const SystemDefinedEvent& event);

/// A key from this source; null when it cannot be made.
CFRef<CGEventRef> keyEvent(CGEventSourceRef source, std::uint16_t keyCode, bool isKeyDown,
                           std::uint64_t flags);

}  // namespace keyrow::macos
