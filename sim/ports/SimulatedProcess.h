#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "app/Keyrow.h"
#include "core/AppIdentifier.h"
#include "sim/ports/ProcessContext.h"
#include "sim/ports/SimulatedPlatform.h"

namespace keyrow::sim {

/// How a process behaves that does not answer any more.
enum class Hang {
  /// It can still be asked to quit, but does not get to it.
  reachable,
  /// It cannot be asked to quit, only be forced to.
  unreachable,
  /// Not even that.
  unstoppable,
};

/// One process on the machine, with its ports and its Keyrow. Destroying it is what
/// `kill -9` does.
class SimulatedProcess {
 public:
  /// A process of the bundle with this identifier, or of none; nothing is launched yet.
  SimulatedProcess(SimulatedMac& mac, OpenHandles::ProcessID processID,
                   const std::optional<std::string>& bundleIdentifier = std::string{appIdentifier});
  ~SimulatedProcess() { end(); }
  SimulatedProcess(const SimulatedProcess&) = delete;
  SimulatedProcess& operator=(const SimulatedProcess&) = delete;

  OpenHandles::ProcessID processID() const { return context_.processID; }
  const std::string& user() const { return context_.user; }

  /// Whether it has ended; what follows is there until the machine gets to tidy up.
  bool hasEnded() const { return context_.mainThread->hasEnded(); }
  Keyrow& keyrow() { return contents_->keyrow; }
  const Platform& platform() const { return contents_->platform.ports(); }
  SimulatedStatusItemView& statusItem() { return contents_->platform.statusItem; }
  SimulatedSettingsWindowView& settingsWindow() { return contents_->platform.settingsWindow; }
  SimulatedPlatform& simulatedPlatform() { return contents_->platform; }

  /// Runs Keyrow's launch sequence; false when it was told to go while it waited for older
  /// instances, and did not live to see the end.
  bool launch();

  /// Runs Keyrow's termination sequence and ends, unless an alert is in the way.
  void terminate();

  /// The user quits it; it gets to that as soon as it answers.
  void quit();

  /// Runs work in its main thread, as soon as it answers.
  void perform(std::function<void()> work) { context_.mainThread->deliver(std::move(work)); }

  /// The user opens the application although it runs.
  void reopen();

  /// Ends at once.
  void kill();

  /// Does not answer from now on, until `resume`.
  void hang(Hang behaviour);
  void resume();
  bool isHanging() const { return hang_.has_value(); }

 private:
  struct Contents {
    Contents(const ProcessContext& context, std::function<void()> terminate)
        : platform{context, std::move(terminate)}, keyrow{platform.ports(), platform.views()} {}

    SimulatedPlatform platform;
    Keyrow keyrow;
  };

  void note(const std::string& what);
  void end();

  const ProcessContext context_;
  /// Shared with whatever is on the stack when the process ends.
  std::shared_ptr<Contents> contents_;
  std::shared_ptr<RunningProcess> running_ = std::make_shared<RunningProcess>();
  std::optional<Hang> hang_;
  DelayedCall tidyUp_;
};

}  // namespace keyrow::sim
