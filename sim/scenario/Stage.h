#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "sim/SimulatedMac.h"
#include "sim/SimulatedProcess.h"

namespace keyrow::sim {

/// What a scenario plays on: a fresh simulated Mac with Finder and System Settings
/// installed, and at most one running Keyrow.
class Stage {
 public:
  Stage();

  SimulatedMac mac;
  /// The running Keyrow; null when none runs.
  std::unique_ptr<SimulatedProcess> process;

  void launchKeyrow();

  /// Marks where an action begins: `expect log` looks at what came after.
  void beginAction() { logLinesBefore = mac.log.lines().size(); }

  /// What was logged since the last action began.
  std::vector<LogEntry> recentLog() const;

  /// Where modes are stored, whether Keyrow runs or not.
  StoredFnStates storedFnStates() { return StoredFnStates{defaults}; }

  /// Gives a registry entry ID that no keyboard has had yet.
  std::uint64_t nextRegistryID() { return ++lastRegistryID; }

 private:
  SimulatedUserDefaults defaults{mac, std::string{appIdentifier}};
  OpenHandles::ProcessID lastProcessID = 500;
  std::uint64_t lastRegistryID = 0x100000000;
  std::size_t logLinesBefore = 0;
};

}  // namespace keyrow::sim
