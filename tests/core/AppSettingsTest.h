#pragma once

#include <string>
#include <vector>

#include "core/AppSettings.h"
#include "platform/NotificationCenter.h"
#include "platform/Platform.h"
#include "tests/core/CoreTest.h"

namespace keyrow::sim {

/// The settings of a fresh user, and an observer of every settings notification.
class AppSettingsTest : public CoreTest {
 protected:
  void SetUp() override {
    for (const std::string name :
         {"CapsLockIndicatorSettingDidChange", "ExternalFunctionKeysSettingDidChange",
          "EnhancedDiagnosticsSettingDidChange", "LocalToggleShortcutSettingDidChange"}) {
      observers_.push_back(process->platform().notificationCenter.addObserver(
          name, [this, name] { posted.push_back(name + " " + storedSettings()); }));
    }
  }

  AppSettings& settings() { return keyrow().settings(); }

  /// Every notification so far, with the settings as its observer found them.
  std::vector<std::string> posted;

 private:
  std::vector<ObserverToken> observers_;
};

}  // namespace keyrow::sim
