#pragma once

#import <AppKit/AppKit.h>

#include <string>

namespace keyrow::macos {

/// What is wrong with how the views of a pane are laid out, a line for each: ambiguous
/// constraints, views that overlap a sibling or stick out of the pane, and controls that are
/// too small for their text, save buttons whose tool tip says all of it. Empty when nothing is.
/// What AppKit has inside its controls is its own affair.
std::string layoutFaults(NSView* pane);

}  // namespace keyrow::macos
