#pragma once

#include <string>

#include "core/ModeChanges.h"
#include "core/PreferenceEvidence.h"
#include "core/StoredFnStates.h"

namespace keyrow::tool {

/// Stores modes for the next launch of Keyrow, where none runs, and never touches the keyboard.
class StoredModes final : public ModeChanges {
 public:
  StoredModes(StoredFnStates& storedFnStates, PreferenceEvidence& evidence)
      : storedFnStates_{storedFnStates}, evidence_{evidence} {}

  /// What was chosen in System Settings before is older from now on.
  CommandResult setGlobalMode(FnState state) override;
  CommandResult flipGlobalMode() override;
  CommandResult setOverride(const std::string& bundleIdentifier, FnState state) override;
  CommandResult clearOverride(const std::string& bundleIdentifier) override;

 private:
  StoredFnStates& storedFnStates_;
  PreferenceEvidence& evidence_;
};

}  // namespace keyrow::tool
