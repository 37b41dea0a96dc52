#include "core/HardwareCustody.h"

#include <algorithm>

#include "core/AppIdentifier.h"

namespace keyrow {

namespace {

/// No sleep is shorter; the two clocks are not read at the same moment.
constexpr std::chrono::milliseconds shortestSleep{100};

}  // namespace

void HardwareCustody::begin() {
  resume();
  knownInstances_.clear();
  for (const auto& instance : use_.workspace.runningApplications(appIdentifier)) {
    knownInstances_.push_back(instance->processIdentifier());
  }
}

bool HardwareCustody::isUnbroken() const {
  return use_.workspace.isSessionActive() &&
         use_.clock.timeAsleep() - asleepBefore_ < shortestSleep && !hasNewerInstance();
}

bool HardwareCustody::hasNewerInstance() const {
  return std::ranges::any_of(
      use_.workspace.runningApplications(appIdentifier), [this](const auto& instance) {
        return std::ranges::find(knownInstances_, instance->processIdentifier()) ==
               knownInstances_.end();
      });
}

}  // namespace keyrow
