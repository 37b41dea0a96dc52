#include "input/HidManagerOpener.h"

#include <array>

namespace keyrow {

namespace {

/// Matches devices of this usage (`kIOHIDDeviceUsagePageKey`, `kIOHIDDeviceUsageKey`).
PropertyDictionary devicesOf(int usage) {
  return {{"DeviceUsagePage", hidPage::genericDesktop}, {"DeviceUsage", usage}};
}

std::array<PropertyDictionary, 2> keyboardMatching() {
  return {devicesOf(hidUsage::keyboard), devicesOf(hidUsage::keypad)};
}

}  // namespace

std::unique_ptr<HidManager> HidManagerOpener::open(
    const std::function<void(HidManager&)>& prepare) {
  access_ = use_.inputMonitoring.access();
  if (access_ == InputMonitoringAccess::unknown) return nullptr;

  auto manager = use_.hidManagers.create();
  manager->setDeviceMatching(keyboardMatching());
  prepare(*manager);
  manager->scheduleWithMainRunLoop();
  const auto result = manager->open();
  const bool isNews = std::exchange(lastResult_, result) != result;
  if (!isOpenAfter(result)) {
    manager.reset();
    if (isNews) {
      use_.hardwareLog.error("Failed to start " + purpose_ + ": " + std::to_string(result));
    }
    return nullptr;
  }
  if (isNews && result != ioReturnSuccess) {
    use_.hardwareLog.info("Started " + purpose_ +
                          " without a keyboard that another program has to itself.");
  }
  return manager;
}

}  // namespace keyrow
