#include "reliability/StageChecks.h"

#include <array>
#include <string_view>
#include <utility>

#include "platform/HidSystem.h"
#include "reliability/KeyPairs.h"

namespace keyrow::reliability {

std::string leaks(sim::Stage& stage) {
  // Of these, a running Keyrow holds so many at most, however long it runs.
  constexpr std::array<std::pair<std::string_view, int>, 3> bounds{{
      {"activity", 1},
      {"HidManager", 2},
      {"observer", 20},
  }};
  for (const auto& [handle, count] : stage.mac.openHandles.all()) {
    for (const auto& [kind, most] : bounds) {
      if (handle.first == kind && count > most)
        return std::to_string(count) + " of " + handle.first + " are open";
    }
  }
  const auto leaks = stage.leaks();
  return leaks.empty() ? leaks : "still open: " + leaks;
}

std::string problemAfterQuit(sim::Stage& stage) {
  stage.mac.faults.clear();
  for (auto* process : stage.running()) {
    if (process->user() == stage.mac.sessions.active()) continue;
    process->resume();
    process->quit();
  }
  if (!stage.process()) return {};
  const bool hadGlobal = stage.storedFnStates().global().has_value();
  while (auto* process = stage.process()) {
    process->resume();
    process->quit();
  }
  stage.mac.scheduler.runReady();
  const auto down = mediaKeysDown(stage.mac);
  if (!down.empty() && !stage.mac.hasKilledKeyrow) return "media keys stay down: " + down;

  const auto global = stage.storedFnStates().global();
  if (!global) return hadGlobal ? "the global mode is lost" : leaks(stage);
  if (stage.mac.hid.parameter(hidFKeyModeKey) != PropertyValue{rawValue(*global)}) {
    return "the hardware is not in the global mode";
  }
  if (stage.mac.globalPreferences.value(stage.globalDomain(),
                                        FnStateController::fnStateDefaultsKey) !=
      PropertyValue{*global == FnState::standard}) {
    return "the system preference is not the global mode";
  }
  return leaks(stage);
}

}  // namespace keyrow::reliability
