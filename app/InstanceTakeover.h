#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/ModePolicy.h"
#include "platform/Application.h"
#include "platform/Bundle.h"
#include "platform/Clock.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/MainRunLoop.h"
#include "platform/Process.h"
#include "platform/SystemLog.h"
#include "platform/Workspace.h"

namespace keyrow {

/// Sees to it that just one instance of Keyrow is in control of the keyboard: the newest
/// takes over from the older ones. Main thread only.
class InstanceTakeover {
 public:
  /// What it uses. `appLog` is the logger of the "app" category.
  struct Uses {
    ModePolicy& modePolicy;
    Application& application;
    Bundle& bundle;
    Clock& clock;
    DistributedNotificationCenter& distributedNotificationCenter;
    MainRunLoop& mainRunLoop;
    Process& process;
    Workspace& workspace;
    Logger& appLog;
  };

  explicit InstanceTakeover(const Uses& uses) : use_{uses} {}

  /// Starts to listen for newer instances, which tell this one to go.
  void registerInstanceTakeoverObserver();
  void removeInstanceTakeoverObserver() { instanceTakeoverObserver_ = {}; }

  /// Lets older instances end. Comes back when they have, or after 3 s at most; what is
  /// then still there is logged.
  void takeOverPreviousInstances();

 private:
  using RunningApplications = std::vector<std::unique_ptr<RunningApplication>>;

  void postInstanceTakeover(std::int32_t targetProcess, const std::string& bundleIdentifier);
  bool waitForTermination(const RunningApplications& applications,
                          std::chrono::nanoseconds timeout);
  void handleInstanceTakeover(const std::optional<PropertyDictionary>& userInfo);
  bool hasGoneOn(const PropertyDictionary& userInfo);

  const Uses use_;
  ObserverToken instanceTakeoverObserver_;
};

}  // namespace keyrow
