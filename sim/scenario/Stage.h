#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sim/machine/KeyText.h"
#include "sim/machine/SimulatedMac.h"
#include "sim/ports/SimulatedProcess.h"

namespace keyrow::sim {

/// What a scenario plays on: a fresh simulated Mac with Finder and System Settings
/// installed, and the instances of Keyrow that run there.
class Stage {
 public:
  Stage();

  SimulatedMac mac;

  /// The Keyrow that was launched last of those that still run; null when none runs.
  SimulatedProcess* process();

  int runningCount();
  bool isRunning(OpenHandles::ProcessID processID);

  /// Makes one more process for Keyrow, which does nothing yet.
  SimulatedProcess& startKeyrow();

  /// Starts one more Keyrow.
  void launchKeyrow() { startKeyrow().launch(); }

  /// A key goes down or comes up: the keyboard of that name, unless it is "none", sends an
  /// input, and a key event follows.
  void changeKey(const std::string& keyboard, const NamedKey& key, bool isDown);

  /// Marks where an action begins: expectations about what happened look at what came
  /// after.
  void beginAction();

  /// What was logged since the last action began.
  std::vector<LogEntry> recentLog() const;

  /// What happened since the last action began.
  std::vector<TimelineEvent> recentTimeline() const;

  /// Where modes are stored, whether Keyrow runs or not.
  StoredFnStates storedFnStates() { return StoredFnStates{defaults_}; }

  /// Gives a registry entry ID that no keyboard has had yet.
  std::uint64_t nextRegistryID() { return ++lastRegistryID_; }

 private:
  SimulatedUserDefaults defaults_{mac, std::string{appIdentifier}};
  std::vector<std::unique_ptr<SimulatedProcess>> processes_;
  OpenHandles::ProcessID lastProcessID_ = 500;
  std::uint64_t lastRegistryID_ = 0x100000000;
  /// Of the modifiers that are held.
  std::uint64_t heldFlags_ = 0;
  std::size_t logLinesBefore_ = 0;
  std::size_t eventsBefore_ = 0;
};

}  // namespace keyrow::sim
