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
    observe(settingsNotification::LocalToggleShortcutSettingDidChange);
    for (const auto& row : booleanSettingTable) observe(row.notification);
  }

  AppSettings& settings() { return keyrow().settings(); }

  /// Every notification so far, with the settings as its observer found them.
  std::vector<std::string> posted;

 private:
  void observe(std::string_view name) {
    observers_.push_back(process->platform().notificationCenter.addObserver(
        name,
        [this, name = std::string{name}] { posted.push_back(name + " " + storedSettings()); }));
  }

  std::vector<ObserverToken> observers_;
};

}  // namespace keyrow::sim
