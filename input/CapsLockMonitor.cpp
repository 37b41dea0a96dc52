#include "input/CapsLockMonitor.h"

#include <algorithm>
#include <chrono>
#include <utility>
namespace keyrow {

namespace {

using namespace std::chrono_literals;

/// A burst of modifier changes is looked at once, so long after the last of them.
constexpr auto debounceDelay = 120ms;

/// What a keyboard reports of itself.
constexpr std::string_view capsLockStateProperty = "HIDCapsLockState";

}  // namespace

void CapsLockMonitor::observeCapsLockIndicatorSetting() {
  if (settingObserver_) return;
  settingObserver_ = use_.settings.observe(BooleanSetting::showCapsLockIndicator,
                                           [this] { applyCapsLockIndicatorSetting(); });
}

void CapsLockMonitor::applyCapsLockIndicatorSetting() {
  const bool isEnabled = use_.settings.isOn(BooleanSetting::showCapsLockIndicator);
  use_.presenter.setCapsLockIndicatorEnabled(isEnabled);
  if (!isEnabled) {
    stopCapsLockMonitoring();
    return;
  }
  startCapsLockMonitoring();
  refreshCapsLockDeviceStates();
  use_.presenter.updateCapsLockIndicator();
}

std::optional<bool> CapsLockMonitor::cachedCapsLockState() const {
  const std::scoped_lock guard{cacheLock_};
  if (deviceStates_.empty()) return std::nullopt;
  return std::ranges::any_of(deviceStates_, [](const auto& state) { return state.second; });
}

std::optional<bool> CapsLockMonitor::systemCapsLockState() const {
  auto service = use_.hidSystem.matchingService(hidSystemClass);
  if (!service) return std::nullopt;
  const auto connection = service->open(hidParamConnectType);
  service.reset();
  if (!connection) return std::nullopt;
  const auto isLocked = (*connection)->modifierLockState(capsLockState);
  return isLocked ? std::optional{*isLocked} : std::nullopt;
}

void CapsLockMonitor::refreshCapsLockIfEnabled() {
  if (!use_.settings.isOn(BooleanSetting::showCapsLockIndicator)) return;
  refreshCapsLockDeviceStates();
  use_.presenter.updateCapsLockIndicator();
}

void CapsLockMonitor::tearDownCapsLockMonitoring() {
  stopCapsLockMonitoring();
  pendingRefresh_ = {};
  settingObserver_ = {};
}

void CapsLockMonitor::startCapsLockMonitoring() {
  startDeviceMonitoring();
  if (!globalFlagsMonitor_) {
    globalFlagsMonitor_ =
        use_.eventMonitors.addGlobalFlagsMonitor([this] { scheduleCapsLockRefresh(); });
  }
  if (!localFlagsMonitor_) {
    localFlagsMonitor_ =
        use_.eventMonitors.addLocalFlagsMonitor([this] { scheduleCapsLockRefresh(); });
  }
}

void CapsLockMonitor::startDeviceMonitoring() {
  if (manager_ && !opener_.isOutdated()) return;
  stopDeviceMonitoring();
  manager_ = opener_.open([this](HidManager& manager) {
    manager.registerDeviceMatchingCallback([this] { refreshCapsLockIfEnabled(); });
    manager.registerDeviceRemovalCallback([this] { refreshCapsLockIfEnabled(); });
  });
}

void CapsLockMonitor::stopDeviceMonitoring() {
  manager_.reset();
  replaceDeviceStates({});
}

void CapsLockMonitor::stopCapsLockMonitoring() {
  globalFlagsMonitor_ = {};
  localFlagsMonitor_ = {};
  stopDeviceMonitoring();
}

void CapsLockMonitor::refreshCapsLockDeviceStates() {
  if (!manager_) return;
  DeviceStates states;
  for (const auto& device : manager_->devices()) {
    const auto registryID = device->registryEntryID();
    if (!registryID) continue;
    const auto value = device->property(capsLockStateProperty);
    const auto isLocked = value ? value->boolValue() : std::nullopt;
    if (isLocked) states.insert_or_assign(*registryID, *isLocked);
  }
  replaceDeviceStates(std::move(states));
}

void CapsLockMonitor::replaceDeviceStates(DeviceStates states) {
  const std::scoped_lock guard{cacheLock_};
  deviceStates_ = std::move(states);
}

void CapsLockMonitor::scheduleCapsLockRefresh() {
  pendingRefresh_ = use_.mainQueue.after(debounceDelay, [this] { performCapsLockRefresh(); });
}

void CapsLockMonitor::performCapsLockRefresh() {
  pendingRefresh_ = {};
  refreshCapsLockDeviceStates();
  use_.presenter.updateCapsLockIndicator();
}

}  // namespace keyrow
