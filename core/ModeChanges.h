#pragma once

#include <string>

#include "core/FnState.h"

namespace keyrow {

/// What came of a command. What is not `done` has changed nothing, save where it says so.
enum class CommandResult {
  done,
  /// An administrator manages what would have changed.
  managed,
  /// The keyboard is in the hands of another user, whose session is in front.
  otherSession,
  /// The keyboard did not take the mode.
  writeFailed,
  /// No mode is known that it could depart from.
  noMode,
  /// There is no global mode that could take the place of an override.
  noGlobalMode,
  /// The application has no override.
  noOverride,
  /// It could not be stored.
  notStored,
  /// The same, but the keyboard has taken it.
  notKept,
};

/// Changes the modes when another program asks for it: the Keyrow that runs does that with the
/// keyboard, and without one they are only stored.
class ModeChanges {
 public:
  virtual CommandResult setGlobalMode(FnState state) = 0;
  virtual CommandResult flipGlobalMode() = 0;

  /// The override of the application with this bundle identifier, whether it is in front or not.
  virtual CommandResult setOverride(const std::string& bundleIdentifier, FnState state) = 0;
  virtual CommandResult clearOverride(const std::string& bundleIdentifier) = 0;

 protected:
  ~ModeChanges() = default;
};

}  // namespace keyrow
