#pragma once

#include "core/AppSettings.h"
#include "platform/LoginItem.h"
#include "ui/Checkbox.h"
#include "ui/SparkleUpdater.h"

namespace keyrow {

/// What the check boxes switch, wherever they stand. Main thread only.
class Switches {
 public:
  struct Uses {
    AppSettings& settings;
    LoginItem& loginItem;
    SparkleUpdater& updater;
  };

  explicit Switches(const Uses& uses) : use_{uses} {}

  bool isOn(Switch what) const;

  /// Switches on or off. The system may refuse; then `isOn` says what is so. Where it wants the
  /// user to approve the login item, that page of System Settings opens.
  void set(Switch what, bool isOn);

 private:
  void toggleLaunchAtLogin(bool isOn);

  const Uses use_;
};

}  // namespace keyrow
