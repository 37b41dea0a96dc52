#include "tool/StoredModes.h"

#include <algorithm>

namespace keyrow::tool {

std::optional<FnState> StoredModes::globalMode() const {
  if (storedFnStates_.isGlobalManaged()) return storedFnStates_.global();
  const auto chosen = evidence_.chosenFnState();
  return chosen ? chosen : storedFnStates_.global();
}

CommandResult StoredModes::setGlobalMode(FnState state) {
  if (storedFnStates_.isGlobalManaged()) return CommandResult::managed;
  // Otherwise what was chosen in System Settings before would win over it.
  const bool isStored = storedFnStates_.setGlobal(state) && evidence_.noteSeen();
  return isStored ? CommandResult::done : CommandResult::notStored;
}

/// What Keyrow would begin with.
std::optional<FnState> StoredModes::firstGlobalMode() const {
  if (const auto preference = fnStateController_.readSystemFnStatePreference()) {
    return fnStateFromPreference(*preference);
  }
  const auto hardware = fnStateController_.readFnState();
  return hardware ? std::optional{*hardware} : std::nullopt;
}

CommandResult StoredModes::flipGlobalMode() {
  auto base = globalMode();
  if (!base) base = firstGlobalMode();
  return base ? setGlobalMode(otherFnState(*base)) : CommandResult::noMode;
}

CommandResult StoredModes::setOverride(const std::string& bundleIdentifier, FnState state) {
  if (storedFnStates_.areLocalsManaged()) return CommandResult::managed;
  const bool isStored = storedFnStates_.setLocal(bundleIdentifier, state);
  return isStored ? CommandResult::done : CommandResult::notStored;
}

CommandResult StoredModes::clearOverride(const std::string& bundleIdentifier) {
  const auto stored = storedFnStates_.localBundleIdentifiers();
  if (std::ranges::find(stored, bundleIdentifier) == stored.end()) return CommandResult::noOverride;
  if (storedFnStates_.areLocalsManaged()) return CommandResult::managed;
  const bool isStored = storedFnStates_.removeLocal(bundleIdentifier);
  return isStored ? CommandResult::done : CommandResult::notStored;
}

}  // namespace keyrow::tool
