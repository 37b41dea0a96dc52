#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// Time passes.
struct Wait {
  std::chrono::nanoseconds duration;
  Outcome play(Stage& stage) const;
};

/// The Mac falls asleep.
struct Sleep {
  Outcome play(Stage& stage) const;
};

/// The Mac wakes up.
struct Wake {
  Outcome play(Stage& stage) const;
};

/// Another user has the screen and the keyboards from now on.
struct SwitchUser {
  std::string user;
  bool isNewToldFirst = false;
  Outcome play(Stage& stage) const;
};

/// The user gives Keyrow a permission, or takes it back.
struct ChangePermission {
  enum class Which { accessibility, inputMonitoring };
  Which which;
  bool isGranted;
  /// Of Accessibility only: how much later running processes are told, absent where they
  /// never are, and whether a notification announces it.
  std::optional<std::chrono::nanoseconds> lateness;
  bool isAnnounced = true;
  Outcome play(Stage& stage) const;
};

/// macOS forgets what the user has said about Input Monitoring.
struct ForgetConsent {
  Outcome play(Stage& stage) const;
};

/// The user answers the dialog that asks for Input Monitoring.
struct AnswerConsent {
  bool isAllowed;
  Outcome play(Stage& stage) const;
};

/// An application takes the keyboard for itself, as for a password, or gives it back.
struct SwitchSecureInput {
  bool isOn;
  /// Whom macOS names as the one that has it; absent where it names nobody.
  std::optional<std::string> holder{};
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
