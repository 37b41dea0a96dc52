#include "input/HidManagerOpener.h"

#include <array>

namespace keyrow {

namespace {

/// Matches keyboards and keypads: `kHIDPage_GenericDesktop` with `kHIDUsage_GD_Keyboard` and
/// `kHIDUsage_GD_Keypad` (IOHIDUsageTables.h).
std::array<PropertyDictionary, 2> keyboardMatching() {
  return {PropertyDictionary{{"DeviceUsagePage", 1}, {"DeviceUsage", 6}},
          PropertyDictionary{{"DeviceUsagePage", 1}, {"DeviceUsage", 7}}};
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
