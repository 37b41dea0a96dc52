#include "core/ModePolicy.h"

#include <chrono>
#include <utility>

#include "core/StateLogTexts.h"

namespace keyrow {

namespace {

using namespace std::chrono_literals;

/// The n-th retry of a failed hardware read waits n times as long.
constexpr auto retryDelay = 350ms;

constexpr std::string_view applyGlobalAction = "apply the stored global function key mode";
constexpr std::string_view applyLocalAction = "apply the stored local function key mode";

bool isSystemSettings(const std::optional<std::string>& bundleIdentifier) {
  return bundleIdentifier == "com.apple.systempreferences" ||
         bundleIdentifier == "com.apple.SystemSettings";
}

}  // namespace

void ModePolicy::takesOver() {
  const auto preference = use_.fnStateController.readSystemFnStatePreference();
  const auto target =
      preference ? std::optional{fnStateFromPreference(*preference)} : use_.storedFnStates.global();
  if (!target) return;
  // Without an override in front the hardware holds the global mode already.
  if (!overrideOf(use_.workspace.frontmostBundleIdentifier())) return;

  const auto current = use_.fnStateController.readFnState();
  if (!current) {
    use_.appLog.error(
        "Failed to read the current function key mode before forcing an older instance to exit: " +
        std::string{errorDescription(current.error())});
    return;
  }
  if (*current == *target) return;
  if (const auto written = use_.fnStateController.writeFnState(*target); !written) {
    use_.appLog.error(
        "Failed to restore the global function key mode before forcing an older instance to "
        "exit: " +
        std::string{errorDescription(written.error())});
    return;
  }
  use_.appLog.notice(
      "Restored the global function key mode before forcing an older instance to exit.");
}

void ModePolicy::launched() {
  lastActivatedBundleIdentifier_ = use_.workspace.frontmostBundleIdentifier();
  applyStoredFnState();
}

bool ModePolicy::switchedApplication() {
  const bool leavesSystemSettings = syncAfterLeavingSystemSettings();
  syncFromHardware();
  applyStoredFnState();
  return leavesSystemSettings;
}

bool ModePolicy::syncAfterLeavingSystemSettings() {
  const auto frontmost = use_.workspace.frontmostBundleIdentifier();
  const auto previous = std::exchange(lastActivatedBundleIdentifier_, frontmost);
  if (!isSystemSettings(previous) || isSystemSettings(frontmost)) return false;
  const auto hardware = currentFnState();
  if (hardware && !isLeftover(*hardware)) {
    syncStoredGlobalFnState(*hardware, "from hardware after leaving System Settings");
  }
  return true;
}

void ModePolicy::syncFromHardware() {
  // While an override is in force the hardware holds the override's mode.
  if (isLocalScopeActive_) return;
  const auto hardware = currentFnState();
  if (hardware && !isLeftover(*hardware)) {
    syncStoredGlobalFnState(*hardware, "from hardware during app switch");
  }
}

void ModePolicy::clicked() {
  if (isLocalScopeActive_) {
    toggleLocalOverride(nullptr);
  } else {
    toggleGlobalFnState(nullptr);
  }
}

ModesToOffer ModePolicy::menuOpens() {
  ModesToOffer modes;
  modes.global = globalOrCurrentFnState();
  const auto frontmost = use_.workspace.frontmostBundleIdentifier();
  modes.hasFrontmostApplication = frontmost.has_value();
  modes.local = overrideOf(frontmost);
  if (!modes.local) modes.local = globalOrCurrentFnState();
  return modes;
}

void ModePolicy::didWake() {
  refreshFromHardware();
  applyStoredFnState();
}

void ModePolicy::willSleep() {
  use_.fnStateController.persistStoredGlobalFnState(FnStatePersistReason::systemSleep);
}

void ModePolicy::yields() {
  restoreGlobalFnState();
  use_.fnStateController.persistStoredGlobalFnState(FnStatePersistReason::instanceTakeover);
}

void ModePolicy::willQuit() { restoreGlobalFnState(); }

void ModePolicy::hasStopped() {
  pruneLocalFnStates();
  use_.fnStateController.persistStoredGlobalFnState(FnStatePersistReason::applicationTermination);
}

void ModePolicy::applyStoredFnState() {
  if (const auto local = overrideOf(use_.workspace.frontmostBundleIdentifier())) {
    if (apply(*local, applyLocalAction, nullptr)) setScope(true);
    return;
  }
  const auto global = storedGlobalFnState();
  if (!global) {
    refreshFromHardware();
    return;
  }
  if (apply(*global, applyGlobalAction, nullptr)) setScope(false);
}

void ModePolicy::syncStoredGlobalFnState(FnState state, std::string_view origin) {
  if (use_.storedFnStates.global() == state) return;
  use_.storedFnStates.setGlobal(state);
  use_.stateLog.notice(std::string{stateLogText::synchronizedGlobal} + std::string{origin} + ": " +
                       std::string{modeText(state)} + ".");
}

void ModePolicy::setGlobalFnState(FnState state, const KeyboardDeviceSource* source) {
  const std::string mode{modeText(state)};
  if (!apply(state, "set the global function key mode to " + mode, source)) return;
  use_.storedFnStates.setGlobal(state);
  setScope(false);
  use_.stateLog.notice(std::string{stateLogText::setGlobal} + mode + sourceSuffix(source) + ".");
}

void ModePolicy::toggleGlobalFnState(const KeyboardDeviceSource* source) {
  if (const auto base = globalOrCurrentFnState()) setGlobalFnState(otherFnState(*base), source);
}

void ModePolicy::setLocalFnState(FnState state, const std::string& bundleIdentifier,
                                 const KeyboardDeviceSource* source) {
  const auto target = "local function key override for the frontmost app to " +
                      std::string{modeText(state)} + appSuffix(bundleIdentifier);
  if (!apply(state, "set a " + target, source)) return;
  use_.storedFnStates.setLocal(bundleIdentifier, state);
  setScope(true);
  use_.stateLog.notice("Set a " + target + sourceSuffix(source) + ".");
}

void ModePolicy::toggleLocalOverride(const KeyboardDeviceSource* source) {
  const auto frontmost = use_.workspace.frontmostBundleIdentifier();
  if (!frontmost) return;
  auto base = overrideOf(frontmost);
  if (!base) base = globalOrCurrentFnState();
  if (base) setLocalFnState(otherFnState(*base), *frontmost, source);
}

void ModePolicy::clearLocalOverride(const KeyboardDeviceSource* source) {
  const auto frontmost = use_.workspace.frontmostBundleIdentifier();
  if (!overrideOf(frontmost)) {
    toggleGlobalFnState(source);
    return;
  }
  const auto suffixes = appSuffix(*frontmost) + sourceSuffix(source);
  const auto global = storedGlobalFnState();
  if (!global) {
    use_.stateLog.error(
        "Unable to clear the current app override because no global function key mode is stored" +
        suffixes + ".");
    return;
  }
  if (!apply(*global, applyGlobalAction, source)) return;
  setScope(false);
  use_.storedFnStates.removeLocal(*frontmost);
  use_.stateLog.notice(std::string{stateLogText::clearedOverride} + suffixes + ".");
}

void ModePolicy::restoreGlobalFnState() {
  const auto global = storedGlobalFnState();
  if (!global) {
    use_.stateLog.notice(stateLogText::cannotRestoreGlobal);
    return;
  }
  if (const auto written = use_.fnStateController.writeFnState(*global); !written) {
    use_.stateLog.error(std::string{stateLogText::failedToRestoreGlobal} +
                        std::string{errorDescription(written.error())});
    return;
  }
  lastKnownFnState_ = global;
  setScope(false);
  use_.stateLog.notice("Restored the global function key mode before termination: " +
                       std::string{modeText(*global)} + ".");
}

std::optional<FnState> ModePolicy::storedGlobalFnState() {
  if (const auto stored = use_.storedFnStates.global()) return stored;

  if (const auto preference = use_.fnStateController.readSystemFnStatePreference()) {
    const auto state = fnStateFromPreference(*preference);
    use_.storedFnStates.setGlobal(state);
    use_.stateLog.notice("Initialized the stored global function key mode from System Settings: " +
                         std::string{modeText(state)} + ".");
    return state;
  }
  const auto hardware = currentFnState();
  if (hardware) use_.storedFnStates.setGlobal(*hardware);
  return hardware;
}

std::optional<FnState> ModePolicy::currentFnState() {
  const auto state = use_.fnStateController.readFnState();
  if (state) return *state;
  use_.stateLog.error("Failed to read the current function key mode from hardware: " +
                      std::string{errorDescription(state.error())});
  return std::nullopt;
}

std::optional<FnState> ModePolicy::globalOrCurrentFnState() {
  const auto stored = storedGlobalFnState();
  return stored ? stored : currentFnState();
}

bool ModePolicy::isLeftover(FnState hardware) const {
  return (isLocalScopeActive_ || hasFailedToApply_) &&
         lastKnownFnState_.value_or(hardware) == hardware;
}

void ModePolicy::refreshFromHardware() {
  if (const auto state = use_.fnStateController.readFnState()) {
    IOKitRetryCount_ = 0;
    if (lastKnownFnState_ != *state) setLastKnownFnState(*state);
    return;
  }
  if (IOKitRetryCount_ >= maximumIOKitRetryCount) return;
  ++IOKitRetryCount_;
  const auto retry = retries_.emplace(retries_.end());
  *retry = use_.mainQueue.after(IOKitRetryCount_ * retryDelay, [this, retry] {
    retries_.erase(retry);
    refreshFromHardware();
  });
}

void ModePolicy::pruneLocalFnStates() {
  auto identifiers = use_.storedFnStates.localBundleIdentifiers();
  std::erase_if(identifiers, [this](const std::string& identifier) {
    return use_.workspace.isApplicationInstalled(identifier);
  });
  use_.storedFnStates.removeLocals(identifiers);
}

bool ModePolicy::apply(FnState state, std::string_view action, const KeyboardDeviceSource* source) {
  const auto written = use_.fnStateController.writeFnState(state);
  hasFailedToApply_ = !written;
  if (!written) {
    use_.stateLog.error("Failed to " + std::string{action} + ": " +
                        std::string{errorDescription(written.error())} + sourceSuffix(source));
    return false;
  }
  setLastKnownFnState(state);
  return true;
}

void ModePolicy::setScope(bool isLocal) {
  isLocalScopeActive_ = isLocal;
  use_.presenter.scopeDidChange(isLocal);
}

void ModePolicy::setLastKnownFnState(FnState state) {
  lastKnownFnState_ = state;
  use_.presenter.fnStateDidChange(state);
}

std::optional<FnState> ModePolicy::overrideOf(
    const std::optional<std::string>& bundleIdentifier) const {
  return bundleIdentifier ? use_.storedFnStates.local(*bundleIdentifier) : std::nullopt;
}

std::string ModePolicy::appSuffix(std::string_view bundleIdentifier) const {
  if (!use_.settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled)) return {};
  return " app=" + std::string{bundleIdentifier};
}

std::string ModePolicy::sourceSuffix(const KeyboardDeviceSource* source) const {
  if (!source) return {};
  return " source=" +
         source->inputSourceLabel(use_.settings.isOn(BooleanSetting::enhancedDiagnosticsEnabled));
}

}  // namespace keyrow
