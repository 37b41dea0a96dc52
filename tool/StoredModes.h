#pragma once

#include <optional>
#include <string>

#include "core/FnStateController.h"
#include "core/ModeChanges.h"
#include "core/PreferenceEvidence.h"
#include "core/StoredFnStates.h"

namespace keyrow::tool {

/// Stores modes for the next launch of Keyrow, where none runs, and never touches the keyboard.
/// What it could store only half is for its user to put back.
class StoredModes final : public ModeChanges {
 public:
  StoredModes(FnStateController& fnStateController, StoredFnStates& storedFnStates,
              PreferenceEvidence& evidence)
      : fnStateController_{fnStateController},
        storedFnStates_{storedFnStates},
        evidence_{evidence} {}

  /// The global mode that Keyrow would find: what was chosen in System Settings since it was there
  /// last, or else what is stored; absent where there is neither.
  std::optional<FnState> globalMode() const;

  /// What was chosen in System Settings before is older from now on.
  CommandResult setGlobalMode(FnState state) override;
  CommandResult flipGlobalMode() override;
  CommandResult setOverride(const std::string& bundleIdentifier, FnState state) override;
  CommandResult clearOverride(const std::string& bundleIdentifier) override;

 private:
  std::optional<FnState> firstGlobalMode() const;

  FnStateController& fnStateController_;
  StoredFnStates& storedFnStates_;
  PreferenceEvidence& evidence_;
};

}  // namespace keyrow::tool
