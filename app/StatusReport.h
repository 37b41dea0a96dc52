#pragma once

#include "app/EventTapKeeper.h"
#include "core/AppSettings.h"
#include "core/KeyboardFnStates.h"
#include "core/ModePolicy.h"
#include "core/Status.h"
#include "core/StoredFnStates.h"
#include "input/KeyboardSourceMonitor.h"
#include "platform/Accessibility.h"
#include "platform/InputMonitoring.h"
#include "platform/Process.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Tells how things stand, for others to read. Main thread only.
class StatusReport {
 public:
  struct Uses {
    const ModePolicy& modePolicy;
    const StoredFnStates& storedFnStates;
    const KeyboardFnStates& keyboardFnStates;
    const AppSettings& settings;
    const EventTapKeeper& eventTapKeeper;
    const KeyboardSourceMonitor& keyboardSourceMonitor;
    Accessibility& accessibility;
    InputMonitoring& inputMonitoring;
    Process& process;
    Workspace& workspace;
  };

  explicit StatusReport(const Uses& uses) : use_{uses} {}

  Status status() const;

 private:
  Status::Running running() const;

  const Uses use_;
};

}  // namespace keyrow
