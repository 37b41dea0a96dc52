#include "core/ModePolicy.h"

#include <chrono>

#include "core/StateLogTexts.h"

namespace keyrow {

namespace {

using namespace std::chrono_literals;

/// The n-th retry of a failed hardware read waits n times as long.
constexpr auto retryDelay = 350ms;

constexpr std::string_view applyGlobalAction = "apply the stored global function key mode";
constexpr std::string_view applyLocalAction = "apply the stored local function key mode";

}  // namespace

void ModePolicy::applyStoredFnState() {
  if (const auto local = overrideOf(workspace_.frontmostBundleIdentifier())) {
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

void ModePolicy::syncStoredGlobalFnState(FnState state, bool applyToFrontmost,
                                         std::string_view origin) {
  if (storedFnStates_.global() == state) return;
  storedFnStates_.setGlobal(state);
  stateLog_.notice(std::string{stateLogText::synchronizedGlobal} + std::string{origin} +
                   ": " + std::string{modeText(state)} + ".");
  if (!applyToFrontmost || overrideOf(workspace_.frontmostBundleIdentifier())) return;
  if (apply(state, applyGlobalAction, nullptr)) setScope(false);
}

void ModePolicy::setGlobalFnState(FnState state, const KeyboardDeviceSource* source) {
  const std::string mode{modeText(state)};
  if (!apply(state, "set the global function key mode to " + mode, source)) return;
  storedFnStates_.setGlobal(state);
  setScope(false);
  stateLog_.notice("Set the global function key mode to " + mode + sourceSuffix(source) + ".");
}

void ModePolicy::toggleGlobalFnState(const KeyboardDeviceSource* source) {
  auto base = storedGlobalFnState();
  if (!base) base = currentFnState();
  if (base) setGlobalFnState(otherFnState(*base), source);
}

void ModePolicy::setLocalFnState(FnState state, const std::string& bundleIdentifier,
                                 const KeyboardDeviceSource* source) {
  const auto target = "local function key override for the frontmost app to " +
                      std::string{modeText(state)} + appSuffix(bundleIdentifier);
  if (!apply(state, "set a " + target, source)) return;
  storedFnStates_.setLocal(bundleIdentifier, state);
  setScope(true);
  stateLog_.notice("Set a " + target + sourceSuffix(source) + ".");
}

void ModePolicy::toggleLocalOverride(const KeyboardDeviceSource* source) {
  const auto frontmost = workspace_.frontmostBundleIdentifier();
  if (!frontmost) return;
  auto base = overrideOf(frontmost);
  if (!base) base = storedGlobalFnState();
  if (!base) base = currentFnState();
  if (base) setLocalFnState(otherFnState(*base), *frontmost, source);
}

void ModePolicy::clearLocalOverride(const KeyboardDeviceSource* source) {
  const auto frontmost = workspace_.frontmostBundleIdentifier();
  if (!overrideOf(frontmost)) {
    toggleGlobalFnState(source);
    return;
  }
  const auto suffixes = appSuffix(*frontmost) + sourceSuffix(source);
  const auto global = storedGlobalFnState();
  if (!global) {
    stateLog_.error(
        "Unable to clear the current app override because no global function key mode is stored" +
        suffixes + ".");
    return;
  }
  if (!apply(*global, applyGlobalAction, source)) return;
  setScope(false);
  storedFnStates_.removeLocal(*frontmost);
  stateLog_.notice(std::string{stateLogText::clearedOverride} +
                   suffixes + ".");
}

void ModePolicy::restoreGlobalFnState() {
  const auto global = storedGlobalFnState();
  if (!global) {
    stateLog_.notice(stateLogText::cannotRestoreGlobal);
    return;
  }
  if (const auto written = fnStateController_.writeFnState(*global); !written) {
    stateLog_.error(std::string{stateLogText::failedToRestoreGlobal} +
                    std::string{errorDescription(written.error())});
    return;
  }
  lastKnownFnState_ = global;
  setScope(false);
  stateLog_.notice("Restored the global function key mode before termination: " +
                   std::string{modeText(*global)} + ".");
}

std::optional<FnState> ModePolicy::storedGlobalFnState() {
  if (const auto stored = storedFnStates_.global()) return stored;

  if (const auto preference = fnStateController_.readSystemFnStatePreference()) {
    const auto state = fnStateFromPreference(*preference);
    storedFnStates_.setGlobal(state);
    stateLog_.notice("Initialized the stored global function key mode from System Settings: " +
                     std::string{modeText(state)} + ".");
    return state;
  }
  const auto hardware = currentFnState();
  if (hardware) storedFnStates_.setGlobal(*hardware);
  return hardware;
}

std::optional<FnState> ModePolicy::currentFnState() {
  const auto state = fnStateController_.readFnState();
  if (state) return *state;
  stateLog_.error("Failed to read the current function key mode from hardware: " +
                  std::string{errorDescription(state.error())});
  return std::nullopt;
}

bool ModePolicy::isLeftover(FnState hardware) const {
  return (isLocalScopeActive_ || hasFailedToApply_) &&
         lastKnownFnState_.value_or(hardware) == hardware;
}

void ModePolicy::refreshFromHardware() {
  if (const auto state = fnStateController_.readFnState()) {
    IOKitRetryCount_ = 0;
    if (lastKnownFnState_ != *state) setLastKnownFnState(*state);
    return;
  }
  if (IOKitRetryCount_ >= maximumIOKitRetryCount) return;
  ++IOKitRetryCount_;
  const auto retry = retries_.emplace(retries_.end());
  *retry = mainQueue_.after(IOKitRetryCount_ * retryDelay, [this, retry] {
    retries_.erase(retry);
    refreshFromHardware();
  });
}

void ModePolicy::pruneLocalFnStates() {
  auto identifiers = storedFnStates_.localBundleIdentifiers();
  std::erase_if(identifiers, [this](const std::string& identifier) {
    return workspace_.isApplicationInstalled(identifier);
  });
  storedFnStates_.removeLocals(identifiers);
}

bool ModePolicy::apply(FnState state, std::string_view action, const KeyboardDeviceSource* source) {
  const auto written = fnStateController_.writeFnState(state);
  hasFailedToApply_ = !written;
  if (!written) {
    stateLog_.error("Failed to " + std::string{action} + ": " +
                    std::string{errorDescription(written.error())} + sourceSuffix(source));
    return false;
  }
  setLastKnownFnState(state);
  return true;
}

void ModePolicy::setScope(bool isLocal) {
  isLocalScopeActive_ = isLocal;
  if (presenter_) presenter_->scopeDidChange(isLocal);
}

void ModePolicy::setLastKnownFnState(FnState state) {
  lastKnownFnState_ = state;
  if (presenter_) presenter_->fnStateDidChange(state);
}

std::optional<FnState> ModePolicy::overrideOf(
    const std::optional<std::string>& bundleIdentifier) const {
  return bundleIdentifier ? storedFnStates_.local(*bundleIdentifier) : std::nullopt;
}

std::string ModePolicy::appSuffix(std::string_view bundleIdentifier) const {
  if (!settings_.enhancedDiagnosticsEnabled()) return {};
  return " app=" + std::string{bundleIdentifier};
}

std::string ModePolicy::sourceSuffix(const KeyboardDeviceSource* source) const {
  if (!source) return {};
  return " source=" + source->inputSourceLabel(settings_.enhancedDiagnosticsEnabled());
}

}  // namespace keyrow
