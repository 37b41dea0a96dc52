#pragma once

#import <AppKit/AppKit.h>

#include <string>

namespace keyrow::macos {

/// Draws the view, light, and writes it as NAME.png into the folder that the environment
/// variable KEYROW_TEST_RESULTS names, or else into the current one. False when nothing was
/// drawn, or when it could not be written.
bool writeImage(NSView* view, const std::string& name);

}  // namespace keyrow::macos
