#pragma once

#include <cstdint>
#include <optional>

#include "core/FnState.h"
#include "core/FnStateController.h"
#include "core/StoredFnStates.h"

namespace keyrow {

/// Finds out whether the user has chosen a mode in System Settings: the system preference is
/// another one than Keyrow last saw or wrote there, and the hardware holds the same mode. What was
/// last seen is stored, so that a choice is found that was made while Keyrow did not run. Main
/// thread only.
class PreferenceEvidence {
 public:
  PreferenceEvidence(FnStateController& fnStateController, StoredFnStates& storedFnStates)
      : fnStateController_{fnStateController}, storedFnStates_{storedFnStates} {}

  /// Whether the hardware can still hold what this user chose.
  enum class Hardware { isOurs, mayBeAnothersAlready };

  /// The mode that was chosen since the preference was last looked at; absent when there is none.
  /// Counts once. A preference that is absent or cannot be read is never evidence. Where the
  /// hardware may be in another user's hands already, the preference alone tells.
  std::optional<FnState> takeChosenFnState(Hardware hardware);

  /// The same without counting: what the next look would find.
  std::optional<FnState> chosenFnState() const { return look(Hardware::isOurs).chosen; }

  /// What is in the preference now is no evidence any more. False where that holds only as long as
  /// this process runs, or not at all: it could not be read, or not be stored.
  bool noteSeen() { return note(fnStateController_.readSynchronizedPreference()); }

  /// Keyrow has written this into the preference.
  void noteWritten(const FnStateController::Persisted& persisted);

 private:
  /// What a look finds.
  struct Finding {
    FnStateController::SynchronizedPreference preference;
    std::optional<FnState> chosen{};
    /// Otherwise it may be evidence later.
    bool isDecided = true;
  };

  Finding look(Hardware whose) const;
  bool note(const FnStateController::SynchronizedPreference& preference);
  bool keep(std::int64_t preference);
  std::optional<std::int64_t> lastSeen() const;

  FnStateController& fnStateController_;
  StoredFnStates& storedFnStates_;
  /// What was seen in the system preference and could not be kept.
  std::optional<std::int64_t> unkept_;
  /// What was written into the system preference and could not be synchronised.
  std::optional<FnState> unwritten_;
};

}  // namespace keyrow
