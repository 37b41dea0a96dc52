#include "core/FnStateController.h"

#include <string>

#include "core/StateLogTexts.h"

namespace keyrow {

std::expected<FnState, KeyboardControllerError> FnStateController::readFnState() {
  constexpr auto failure = std::unexpected{KeyboardControllerError::readFailed};

  auto service = use_.hidSystem.matchingService(hidSystemClass);
  if (!service) return failure;
  const auto mode = service->entry(hidParametersKey, hidFKeyModeKey);
  service.reset();

  const auto* raw = mode ? mode->integer() : nullptr;
  const auto state = raw ? fnStateFromRawValue(*raw) : std::nullopt;
  if (!state) return failure;
  return *state;
}

std::expected<void, KeyboardControllerError> FnStateController::writeFnState(FnState state) {
  constexpr auto failure = std::unexpected{KeyboardControllerError::writeFailed};

  auto service = use_.hidSystem.matchingService(hidSystemClass);
  if (!service) return failure;
  const auto connection = service->open(hidParamConnectType);
  service.reset();

  if (!connection) return failure;
  if ((*connection)->setParameter(hidFKeyModeKey, rawValue(state)) != ioReturnSuccess) {
    return failure;
  }
  return {};
}

std::optional<bool> FnStateController::readSystemFnStatePreference() {
  // Without this a change that System Settings made would not be seen. The value is
  // still the best there is when synchronising fails.
  use_.globalPreferences.synchronize();
  const auto value = use_.globalPreferences.copyValue(fnStateDefaultsKey);
  return value ? value->boolValue() : std::nullopt;
}

FnStateController::SynchronizedPreference FnStateController::readSynchronizedPreference() {
  if (!use_.globalPreferences.synchronize()) {
    return std::unexpected{KeyboardControllerError::readFailed};
  }
  const auto value = use_.globalPreferences.copyValue(fnStateDefaultsKey);
  const auto isStandard = value ? value->boolValue() : std::nullopt;
  return isStandard ? std::optional{fnStateFromPreference(*isStandard)} : std::nullopt;
}

bool FnStateController::persistGlobalFnState(FnState state, FnStatePersistReason reason) {
  const bool standard = state == FnState::standard;
  use_.globalPreferences.setValue(fnStateDefaultsKey, standard);
  if (!use_.globalPreferences.synchronize()) {
    use_.stateLog.error(stateLogText::failedToSynchronizePreference);
    return false;
  }
  if (reason == FnStatePersistReason::quiet) return true;
  use_.stateLog.info("Persisted the global function key mode to NSUserDefaults for " +
                     std::string{persistReasonText(reason)} +
                     ": standardFunctionKeys=" + (standard ? "true" : "false"));
  return true;
}

std::optional<FnStateController::Persisted> FnStateController::persistStoredGlobalFnState(
    FnStatePersistReason reason) {
  if (const auto stored = use_.storedFnStates.global()) {
    return Persisted{*stored, persistGlobalFnState(*stored, reason)};
  }
  const auto hardware = readFnState();
  if (!hardware) {
    use_.stateLog.error(std::string{stateLogText::failedToReadBeforePersisting} +
                        std::string{errorDescription(hardware.error())});
    return std::nullopt;
  }
  const bool isSynchronized = persistGlobalFnState(*hardware, reason);
  use_.stateLog.notice(
      "No stored global function key mode was found. Persisted the current hardware mode instead.");
  return Persisted{*hardware, isSynchronized};
}

}  // namespace keyrow
