#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

#include "core/AppSettings.h"
#include "input/HidManagerOpener.h"
#include "platform/EventMonitors.h"
#include "platform/HidManagers.h"
#include "platform/HidSystem.h"
#include "platform/InputMonitoring.h"
#include "platform/MainQueue.h"
#include "platform/SystemLog.h"

namespace keyrow {

/// Shows the Caps Lock state to the user.
class CapsLockPresenter {
 public:
  /// Shows the state afresh from now on, or not at all.
  virtual void setCapsLockIndicatorEnabled(bool enabled) = 0;
  /// The state may have changed.
  virtual void updateCapsLockIndicator() = 0;

 protected:
  ~CapsLockPresenter() = default;
};

/// Watches, while the user wants to see it, whether Caps Lock is on: whenever a modifier
/// changes anywhere or a keyboard comes or goes, it asks every keyboard. Main thread only.
class CapsLockMonitor {
 public:
  /// What it uses. `presenter` shows the state; `hardwareLog` is the logger of the
  /// "hardware" category.
  struct Uses {
    HidManagers& hidManagers;
    InputMonitoring& inputMonitoring;
    HidSystem& hidSystem;
    EventMonitors& eventMonitors;
    MainQueue& mainQueue;
    const AppSettings& settings;
    CapsLockPresenter& presenter;
    Logger& hardwareLog;
  };

  explicit CapsLockMonitor(const Uses& uses)
      : use_{uses},
        opener_{{.hidManagers = uses.hidManagers,
                 .inputMonitoring = uses.inputMonitoring,
                 .hardwareLog = uses.hardwareLog},
                "Caps Lock device monitoring"} {}

  /// Applies the setting at every change from now on.
  void observeCapsLockIndicatorSetting();

  /// Starts or stops monitoring, as the setting says, and tells the presenter. Starting
  /// what runs changes nothing; what the system refused before is tried again.
  void applyCapsLockIndicatorSetting();

  /// Whether any keyboard reports Caps Lock; absent when no keyboard reports anything.
  std::optional<bool> cachedCapsLockState() const;

  /// What the HID system says, whichever keyboard it has that from; absent when it cannot
  /// be read.
  std::optional<bool> systemCapsLockState() const;

  /// Asks the keyboards and updates the indicator, if the user wants to see it.
  void refreshCapsLockIfEnabled();

  /// Ends everything, also the observation of the setting.
  void tearDownCapsLockMonitoring();

 private:
  using DeviceStates = std::map<std::uint64_t, bool>;

  void startCapsLockMonitoring();
  void startDeviceMonitoring();
  void stopDeviceMonitoring();
  void stopCapsLockMonitoring();
  void refreshCapsLockDeviceStates();
  void replaceDeviceStates(DeviceStates states);
  void scheduleCapsLockRefresh();
  void performCapsLockRefresh();

  const Uses use_;

  HidManagerOpener opener_;
  /// Present while device monitoring runs.
  std::unique_ptr<HidManager> manager_;
  Registration globalFlagsMonitor_;
  Registration localFlagsMonitor_;
  DelayedCall pendingRefresh_;
  ObserverToken settingObserver_;

  /// Guards `deviceStates`.
  mutable std::mutex cacheLock_;
  /// What each keyboard reports, by registry entry ID.
  DeviceStates deviceStates_;
};

}  // namespace keyrow
