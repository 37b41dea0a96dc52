#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/HidManagers.h"
#include "platform/InputMonitoring.h"
#include "platform/SystemLog.h"

namespace keyrow {

/// Opens HID managers that watch keyboards and keypads, as far as macOS and the user let it, and
/// logs where they do not: the same failure once, until it is another one. Main thread only.
class HidManagerOpener {
 public:
  /// What it uses. `hardwareLog` is the logger of the "hardware" category.
  struct Uses {
    HidManagers& hidManagers;
    InputMonitoring& inputMonitoring;
    Logger& hardwareLog;
  };

  /// `purpose` is what the log calls it.
  HidManagerOpener(const Uses& uses, std::string purpose)
      : use_{uses}, purpose_{std::move(purpose)} {}

  /// A manager that is scheduled and open; `prepare` registers with it before. Null when macOS
  /// refuses, and as long as the user has not said whether Keyrow may listen: opening one would
  /// wait for the answer.
  std::unique_ptr<HidManager> open(const std::function<void(HidManager&)>& prepare);

  /// Whether the user has said something else since the last `open`. What was opened then gets
  /// nothing any more, or could be opened now.
  bool isOutdated() const { return use_.inputMonitoring.access() != access_; }

  /// Whether another program had a keyboard to itself at the last `open`.
  bool lacksKeyboard() const { return lastResult_ == ioReturnExclusiveAccess; }

 private:
  const Uses use_;
  const std::string purpose_;

  /// At the last `open`.
  InputMonitoringAccess access_ = InputMonitoringAccess::unknown;
  /// What the last manager gave when it was opened.
  IOReturn lastResult_ = ioReturnSuccess;
};

}  // namespace keyrow
