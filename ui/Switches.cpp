#include "ui/Switches.h"

namespace keyrow {

bool Switches::isOn(Switch what) const {
  if (const auto* setting = std::get_if<BooleanSetting>(&what)) return use_.settings.isOn(*setting);
  switch (std::get<OtherSwitch>(what)) {
    case OtherSwitch::loginItem:
      return use_.loginItem.status() == LoginItemStatus::enabled;
    case OtherSwitch::automaticUpdates:
      return use_.updater.automaticChecksEnabled();
  }
  return false;
}

void Switches::set(Switch what, bool isOn) {
  if (const auto* setting = std::get_if<BooleanSetting>(&what)) {
    use_.settings.set(*setting, isOn);
    return;
  }
  switch (std::get<OtherSwitch>(what)) {
    case OtherSwitch::loginItem:
      return toggleLaunchAtLogin(isOn);
    case OtherSwitch::automaticUpdates:
      return use_.updater.setAutomaticChecksEnabled(isOn);
  }
}

void Switches::toggleLaunchAtLogin(bool isOn) {
  if (!isOn) {
    use_.loginItem.unregisterItem();
    return;
  }
  use_.loginItem.registerItem();
  if (use_.loginItem.status() == LoginItemStatus::requiresApproval) {
    use_.loginItem.openSystemSettings();
  }
}

}  // namespace keyrow
