#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/AppIdentifier.h"
#include "sim/ports/ProcessContext.h"
#include "sim/ports/SimulatedBundle.h"
#include "sim/ports/SimulatedClock.h"
#include "sim/ports/SimulatedDistributedNotificationCenter.h"
#include "sim/ports/SimulatedGlobalPreferences.h"
#include "sim/ports/SimulatedHidSystem.h"
#include "sim/ports/SimulatedMainQueue.h"
#include "sim/ports/SimulatedNotificationCenter.h"
#include "sim/ports/SimulatedProcessInfo.h"
#include "sim/ports/SimulatedSecureInput.h"
#include "sim/ports/SimulatedSystemLog.h"
#include "sim/ports/SimulatedTerminal.h"
#include "sim/ports/SimulatedText.h"
#include "sim/ports/SimulatedUserDefaults.h"
#include "sim/ports/SimulatedWorkspace.h"
#include "tool/Tool.h"

namespace keyrow::sim {

/// One run of the command `keyrow` in a terminal: a process with its ports. Destroying it is what
/// Ctrl-C does.
class SimulatedTool {
 public:
  SimulatedTool(SimulatedMac& mac, OpenHandles::ProcessID processID, const std::string& user,
                bool isRoot);
  ~SimulatedTool() { context_.mainThread->end(); }
  SimulatedTool(const SimulatedTool&) = delete;
  SimulatedTool& operator=(const SimulatedTool&) = delete;

  OpenHandles::ProcessID processID() const { return context_.processID; }

  void run(const std::vector<std::string>& arguments) { tool_.run(arguments); }

  /// Absent while it runs.
  std::optional<int> exitStatus() const { return exitStatus_; }

 private:
  const ProcessContext context_;
  std::optional<int> exitStatus_;
  SimulatedBundle bundle_;
  SimulatedClock clock_;
  SimulatedDistributedNotificationCenter distributedNotificationCenter_;
  SimulatedGlobalPreferences globalPreferences_;
  SimulatedHidSystem hidSystem_;
  SimulatedMainQueue mainQueue_;
  SimulatedNotificationCenter notificationCenter_;
  SimulatedProcessInfo process_;
  SimulatedSecureInput secureInput_;
  SimulatedSystemLog systemLog_;
  SimulatedTerminal terminal_;
  SimulatedText text_;
  SimulatedUserDefaults userDefaults_;
  SimulatedWorkspace workspace_;
  tool::Tool tool_;
};

}  // namespace keyrow::sim
