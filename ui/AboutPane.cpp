#include "ui/AboutPane.h"

#include "core/NamedSettings.h"
#include "ui/AboutLayout.h"
#include "ui/VersionText.h"

namespace keyrow {

void AboutPane::viewDidLoad() {
  showSwitches();
  use_.view.setVersion("Version " + versionText(use_.bundle));
  activeObserver_ =
      use_.notificationCenter.addObserver(applicationDidBecomeActive, [this] { showSwitches(); });
  settingsObserver_ =
      use_.notificationCenter.addObserver(settingWasSet, [this] { showSwitches(); });
}

void AboutPane::viewWillAppear() { showSwitches(); }

void AboutPane::toggle(Switch what, bool isOn) {
  use_.switches.set(what, isOn);
  use_.view.setChecked(what, use_.switches.isOn(what));
}

void AboutPane::showSwitches() {
  for (const auto& checkbox : checkboxesOf(aboutLayout::rows)) {
    use_.view.setChecked(checkbox.what, use_.switches.isOn(checkbox.what));
  }
}

}  // namespace keyrow
