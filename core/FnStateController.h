#pragma once

#include <expected>
#include <optional>
#include <string_view>

#include "core/FnState.h"
#include "core/FnStatePersistReason.h"
#include "core/KeyboardControllerError.h"
#include "core/StoredFnStates.h"
#include "platform/GlobalPreferences.h"
#include "platform/HidSystem.h"
#include "platform/SystemLog.h"

namespace keyrow {

/// Carries the mode to and from the hardware, and mirrors it into the system
/// preference that System Settings shows. Keeps no state: every call asks the system
/// afresh, from any thread.
class FnStateController {
 public:
  /// The system preference; true means `FnState::standard`.
  static constexpr std::string_view fnStateDefaultsKey = "com.apple.keyboard.fnState";

  /// What it uses. `stateLog` is the logger of the "state" category.
  struct Uses {
    HidSystem& hidSystem;
    GlobalPreferences& globalPreferences;
    const StoredFnStates& storedFnStates;
    Logger& stateLog;
  };

  explicit FnStateController(const Uses& uses) : use_{uses} {}

  /// The mode that the hardware holds, or `readFailed`.
  std::expected<FnState, KeyboardControllerError> readFnState();

  /// Puts the hardware into a mode; `writeFailed` leaves it as it was.
  std::expected<void, KeyboardControllerError> writeFnState(FnState state);

  /// The system preference, as of now; absent when there is none or it is no number
  /// and no Boolean.
  std::optional<bool> readSystemFnStatePreference();

  /// The mode of the system preference as others see it: absent when there is none, and
  /// `readFailed` when it may be older than what others wrote.
  using SynchronizedPreference = std::expected<std::optional<FnState>, KeyboardControllerError>;
  SynchronizedPreference readSynchronizedPreference();

  /// Writes a mode into the system preference, and logs how that went. False when others
  /// cannot see it yet.
  bool persistGlobalFnState(FnState state, FnStatePersistReason reason);

  /// A mode that was written into the system preference, and whether others see it.
  struct Persisted {
    FnState state;
    bool isSynchronized;
  };

  /// Writes the stored global mode into the system preference, or the hardware's mode
  /// when none is stored. Logs how that went; absent when there is no mode to write.
  std::optional<Persisted> persistStoredGlobalFnState(FnStatePersistReason reason);

 private:
  const Uses use_;
};

}  // namespace keyrow
