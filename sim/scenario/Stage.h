#pragma once

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/machine/SimulatedMac.h"
#include "sim/ports/SimulatedProcess.h"
#include "sim/ports/SimulatedTool.h"
#include "sim/scenario/Outcome.h"

namespace keyrow::sim {

/// What a scenario plays on: a fresh simulated Mac with Finder and System Settings
/// installed, and the instances of Keyrow that run there.
class Stage {
 public:
  Stage();
  /// What happens while everything is taken apart is not for the timeline.
  ~Stage() { mac.timeline.setListener({}); }
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;

  SimulatedMac mac;

  /// Of those that run in the session of the user who is there, the Keyrow that was launched last;
  /// null when there is none.
  SimulatedProcess* process();

  /// The Keyrow with this process identifier; null when it does not run.
  SimulatedProcess* process(OpenHandles::ProcessID processID);

  /// Those that run, in all sessions, in the order of their launch.
  std::vector<SimulatedProcess*> running();

  /// Whether one of them does not answer.
  bool isAnyHanging() { return std::ranges::any_of(running(), &SimulatedProcess::isHanging); }

  /// How many run in the session of the user who is there.
  int runningCount() const { return runningCount(mac.sessions.active()); }
  int runningCount(const std::string& user) const;

  /// Asks every Keyrow in the session of the user who is there to quit.
  void askAllToQuit();

  /// The process identifiers of those that run, in the order of their launch, or "none".
  std::string runningProcesses() const;

  /// Does something to the Keyrow with this process identifier, or to the one that was
  /// launched last where none is given. Says so where it does not run.
  Outcome tell(std::optional<OpenHandles::ProcessID> processID,
               const std::function<Outcome(SimulatedProcess&)>& action);

  /// The same with the one that was launched last, and with something that it shows; an alert
  /// of its own, which is in front of that, has to be answered first.
  Outcome touch(const std::function<Outcome(SimulatedProcess&)>& action);

  /// That no keyboard of this name is attached, and which ones are.
  Outcome noSuchKeyboard(std::string_view name) const;

  /// That something was expected, but Keyrow is not running.
  static Outcome keyrowMissing(std::string_view expected);

  /// Makes one more process for Keyrow, which does nothing yet.
  SimulatedProcess& startKeyrow();

  /// Starts one more Keyrow.
  void launchKeyrow() { startKeyrow().launch(); }

  /// Marks where an action begins: expectations about what happened look at what came
  /// after. No more than a million events may come of it.
  void beginAction();

  /// What was logged since the last action began.
  std::vector<LogEntry> recentLog() const;

  /// Whether a log line that was written since then begins so.
  bool hasLogged(std::string_view beginning) const;

  /// What happened since the last action began.
  std::vector<TimelineEvent> recentTimeline() const { return mac.timeline.events(); }

  /// How often this call was made since the last action began.
  std::uint64_t recentCallCount(PortCall call) const;

  /// What is held open that should be closed or released; empty when there is nothing. A
  /// process that has ended may hold nothing; one that runs may hold no service and no
  /// connection, since it opens and closes them within one action.
  std::string leaks();

  /// The domains of the user who is there: Keyrow's settings, and what all applications share.
  std::string keyrowDomain() const {
    return Sessions::domain(mac.sessions.active(), appIdentifier);
  }
  std::string globalDomain() const { return globalDomain(mac.sessions.active()); }
  static std::string globalDomain(std::string_view user) {
    return Sessions::domain(user, GlobalPreferences::domain);
  }

  /// Where that user's modes are stored, whether Keyrow runs or not.
  StoredFnStates storedFnStates() { return storedFnStates(mac.sessions.active()); }
  StoredFnStates storedFnStates(const std::string& user) {
    const auto domain = Sessions::domain(user, appIdentifier);
    return StoredFnStates{defaults_.try_emplace(user, mac, domain).first->second};
  }

  /// Makes one more process for the command `keyrow`, which does nothing yet: in the session of
  /// this user, or else of the one who is there.
  SimulatedTool& startTool(bool isRoot, const std::optional<std::string>& user = std::nullopt);

  /// Ends all of these that still run; false when there are none.
  bool interruptTools();

  /// Of the one that was started last; absent while it runs, or where there was none.
  std::optional<int> toolExitStatus() const;

  /// Gives a registry entry ID that no keyboard has had yet.
  std::uint64_t nextRegistryID() { return ++lastRegistryID_; }

 private:
  /// By user.
  std::map<std::string, SimulatedUserDefaults> defaults_;
  std::vector<std::unique_ptr<SimulatedProcess>> processes_;
  OpenHandles::ProcessID lastProcessID_ = 500;
  std::vector<std::unique_ptr<SimulatedTool>> tools_;
  OpenHandles::ProcessID lastToolProcessID_ = 9000;
  std::uint64_t lastRegistryID_ = 0x100000000;
  std::size_t logLinesBefore_ = 0;
  std::array<std::uint64_t, portCalls.size()> callsBefore_{};
};

}  // namespace keyrow::sim
