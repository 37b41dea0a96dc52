#include "tool/StoredModes.h"

#include <algorithm>

namespace keyrow::tool {

CommandResult StoredModes::setGlobalMode(FnState state) {
  if (storedFnStates_.isGlobalManaged()) return CommandResult::managed;
  storedFnStates_.setGlobal(state);
  evidence_.noteSeen();
  return CommandResult::done;
}

CommandResult StoredModes::flipGlobalMode() {
  // What was chosen while Keyrow did not run is what a flip departs from.
  const auto chosen = evidence_.takeChosenFnState(PreferenceEvidence::Hardware::isOurs);
  const auto base = chosen ? chosen : storedFnStates_.global();
  return base ? setGlobalMode(otherFnState(*base)) : CommandResult::noMode;
}

CommandResult StoredModes::setOverride(const std::string& bundleIdentifier, FnState state) {
  if (storedFnStates_.areLocalsManaged()) return CommandResult::managed;
  storedFnStates_.setLocal(bundleIdentifier, state);
  return CommandResult::done;
}

CommandResult StoredModes::clearOverride(const std::string& bundleIdentifier) {
  const auto stored = storedFnStates_.localBundleIdentifiers();
  if (std::ranges::find(stored, bundleIdentifier) == stored.end()) return CommandResult::noOverride;
  if (storedFnStates_.areLocalsManaged()) return CommandResult::managed;
  storedFnStates_.removeLocal(bundleIdentifier);
  return CommandResult::done;
}

}  // namespace keyrow::tool
