#pragma once

#include "app/EventTapKeeper.h"
#include "core/AppSettings.h"
#include "core/FnStateController.h"
#include "core/KeyboardFnStates.h"
#include "core/ModePolicy.h"
#include "core/NamedSettings.h"
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
    FnStateController& fnStateController;
    const StoredFnStates& storedFnStates;
    const KeyboardFnStates& keyboardFnStates;
    const AppSettings& settings;
    const NamedSettings& namedSettings;
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
  Status::Source source(const Status& status) const;
  Status::Running running() const;

  const Uses use_;
};

}  // namespace keyrow
