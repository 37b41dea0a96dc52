#pragma once

#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppSettings.h"
#include "platform/Bundle.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"

namespace keyrow {

/// Posted in the process when a setting was set by its name.
inline constexpr std::string_view settingWasSet = "SettingWasSet";

/// The settings of the settings window by the names under which people write them, as texts: the
/// keys of the user defaults, and "shortcut" for the three keys of the per-app shortcut. Main
/// thread only.
class NamedSettings {
 public:
  /// What it uses. `setAutomaticChecks` switches the automatic checks for updates; absent where
  /// that is only stored.
  struct Uses {
    AppSettings& settings;
    Bundle& bundle;
    NotificationCenter& notificationCenter;
    UserDefaults& userDefaults;
    std::function<void(bool)> setAutomaticChecks{};
  };

  explicit NamedSettings(Uses uses) : use_{std::move(uses)} {}

  /// What stands for a setting's default.
  static constexpr std::string_view defaultValue = "default";

  /// All names, in the order of the window.
  static std::vector<std::string> names();

  /// The setting as `set` takes it; absent for a name that is none.
  std::optional<std::string> value(std::string_view name) const;

  /// Why this cannot be set, in words for people; absent when it can.
  std::optional<std::string> problem(std::string_view name, std::string_view value) const;

  /// Whether an administrator manages what is stored for it.
  bool isManaged(std::string_view name) const;

  /// Sets what has no problem, and posts `settingWasSet`. False when it could not be stored;
  /// then everything is as it was before.
  bool set(std::string_view name, std::string_view value);

 private:
  bool checksAutomatically() const;
  bool checksByDefault() const;
  bool reset(std::string_view name);
  bool resetAutomaticChecks();
  bool store(std::string_view name, std::string_view value);

  const Uses use_;
};

}  // namespace keyrow
