#include "core/PreferenceEvidence.h"

namespace keyrow {

std::optional<FnState> PreferenceEvidence::takeChosenFnState(Hardware whose) {
  const auto preference = fnStateController_.readSynchronizedPreference();
  const auto seen = lastSeen();
  if (!preference || !*preference || !seen || rawValue(**preference) == *seen) {
    note(preference);
    return std::nullopt;
  }
  // Keyrow's own may have got there only now.
  const bool isOwn = *preference == unwritten_;
  if (whose == Hardware::mayBeAnothersAlready) {
    note(preference);
    return isOwn ? std::nullopt : *preference;
  }
  const auto hardware = fnStateController_.readFnState();
  // What cannot be decided now may be evidence later.
  if (!hardware && !isOwn) return std::nullopt;
  note(preference);
  return !isOwn && *hardware == **preference ? *preference : std::nullopt;
}

void PreferenceEvidence::noteWritten(const FnStateController::Persisted& persisted) {
  unwritten_.reset();
  if (persisted.isSynchronized) {
    keep(rawValue(persisted.state));
  } else {
    unwritten_ = persisted.state;
  }
}

void PreferenceEvidence::note(const FnStateController::SynchronizedPreference& preference) {
  if (!preference) return;
  unwritten_.reset();
  if (*preference) {
    keep(rawValue(**preference));
  } else if (!lastSeen()) {
    keep(StoredFnStates::noPreference);
  }
}

void PreferenceEvidence::keep(std::int64_t preference) {
  unkept_.reset();
  if (storedFnStates_.lastSeenPreference() == preference) return;
  if (!storedFnStates_.setLastSeenPreference(preference)) unkept_ = preference;
}

std::optional<std::int64_t> PreferenceEvidence::lastSeen() const {
  return unkept_ ? unkept_ : storedFnStates_.lastSeenPreference();
}

}  // namespace keyrow
