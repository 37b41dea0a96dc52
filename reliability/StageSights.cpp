#include "reliability/StageSights.h"

#include <algorithm>

#include "core/FnStateController.h"
#include "sim/machine/ModeWords.h"
#include "sim/scenario/EventPattern.h"

namespace keyrow::reliability {

std::optional<FnState> systemPreference(sim::Stage& stage, const std::string& user) {
  const auto preference = stage.mac.globalPreferences.value(stage.globalDomain(user),
                                                            FnStateController::fnStateDefaultsKey);
  const auto isStandard = preference ? preference->boolValue() : std::nullopt;
  return isStandard ? std::optional{fnStateFromPreference(*isStandard)} : std::nullopt;
}

Modes modesOf(sim::Stage& stage, const std::string& user) {
  Modes modes;
  modes.hardware = sim::modeOfWord(stage.mac.hid.modeName());
  modes.preference = systemPreference(stage, user);
  const auto stored = stage.storedFnStates(user);
  modes.global = stored.global();
  for (const auto& app : stored.localBundleIdentifiers()) {
    if (const auto mode = stored.local(app)) modes.overrides[app] = *mode;
  }
  return modes;
}

bool hasFailed(sim::Stage& stage, sim::PortCall call) {
  const sim::EventPattern failure{sim::TimelineEvent::Kind::fault,
                                  {std::string{sim::info(call).name}}};
  return std::ranges::any_of(stage.recentTimeline(),
                             [&](const auto& event) { return failure.matches(event); });
}

bool hasAnyFault(sim::Stage& stage) {
  return std::ranges::any_of(stage.recentTimeline(), [](const auto& event) {
    return event.kind == sim::TimelineEvent::Kind::fault;
  });
}

}  // namespace keyrow::reliability
