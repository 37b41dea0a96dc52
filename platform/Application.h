#pragma once

#include "platform/Port.h"

namespace keyrow {

/// This process as an application (`NSApplication`, `NSRunningApplication.currentApplication`).
class Application : public Port {
 public:
  /// Brings all windows of this application forward
  /// (`activateWithOptions:NSApplicationActivateAllWindows`).
  virtual void activateAllWindows() = 0;

  /// Makes this the active application, whatever the one that is wants
  /// (`activateIgnoringOtherApps:`). The `activate` of macOS 14 asks that one, and often does
  /// nothing for an application without an icon in the Dock.
  virtual void activateIgnoringOtherApps() = 0;

  /// Ends the application by way of its termination sequence (`terminate:`). On a Mac
  /// this does not return.
  virtual void terminate() = 0;
};

/// Posted on the default notification centre when this application becomes active
/// (`NSApplicationDidBecomeActiveNotification`).
inline constexpr auto applicationDidBecomeActive = "NSApplicationDidBecomeActiveNotification";

}  // namespace keyrow
