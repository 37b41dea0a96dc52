#include "core/PreferenceEvidence.h"

namespace keyrow {

std::optional<FnState> PreferenceEvidence::takeChosenFnState(Hardware whose) {
  const auto finding = look(whose);
  if (finding.isDecided) note(finding.preference);
  return finding.chosen;
}

PreferenceEvidence::Finding PreferenceEvidence::look(Hardware whose) const {
  Finding finding{.preference = fnStateController_.readSynchronizedPreference()};
  const auto& preference = finding.preference;
  const auto seen = lastSeen();
  if (!preference || !*preference || !seen || rawValue(**preference) == *seen) return finding;
  // Keyrow's own may have got there only now.
  if (*preference == unwritten_) return finding;
  if (whose == Hardware::mayBeAnothersAlready) {
    finding.chosen = *preference;
    return finding;
  }
  const auto hardware = fnStateController_.readFnState();
  finding.isDecided = hardware.has_value();
  if (hardware && *hardware == **preference) finding.chosen = *preference;
  return finding;
}

void PreferenceEvidence::noteWritten(const FnStateController::Persisted& persisted) {
  unwritten_.reset();
  if (persisted.isSynchronized) {
    keep(rawValue(persisted.state));
  } else {
    unwritten_ = persisted.state;
  }
}

bool PreferenceEvidence::note(const FnStateController::SynchronizedPreference& preference) {
  if (!preference) return false;
  unwritten_.reset();
  if (*preference) return keep(rawValue(**preference));
  return lastSeen() || keep(StoredFnStates::noPreference);
}

bool PreferenceEvidence::keep(std::int64_t preference) {
  unkept_.reset();
  if (storedFnStates_.lastSeenPreference() == preference) return true;
  if (storedFnStates_.setLastSeenPreference(preference)) return true;
  unkept_ = preference;
  return false;
}

std::optional<std::int64_t> PreferenceEvidence::lastSeen() const {
  return unkept_ ? unkept_ : storedFnStates_.lastSeenPreference();
}

}  // namespace keyrow
