#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "sim/scenario/Scenario.h"
#include "sim/scenario/Stage.h"

namespace keyrow::reliability {

/// Follows the event tap from line to line: it lives, or somebody has said why not, and none
/// lives without trust once Keyrow had a chance to see that.
class TapWatch {
 public:
  explicit TapWatch(sim::Stage& stage) : stage_{stage} {}

  /// What there was before a line.
  struct Before {
    int runningCount = 0;
    bool isAsleep = false;
  };

  /// What is wrong after a line, or empty. `isDone`: it could be carried out.
  std::string problem(const sim::Action& action, const Before& before, bool isDone);

  /// Lets everything work again, and gives what is wrong with the tap then, or empty.
  std::string problemOfComeback();

 private:
  bool mustHaveTap(const sim::Action& action, const Before& before);
  bool mustHaveStoppedTap(const sim::Action& action, const Before& before);
  void followTrust(const sim::Action& action);

  sim::Stage& stage_;
  /// The process whose tap has worked, and has no excuse for not working.
  std::optional<sim::OpenHandles::ProcessID> tapOwner_;
  /// The process that was the last to have a working tap, dead or not.
  std::optional<sim::OpenHandles::ProcessID> tapStarter_;
  /// Somebody has said why there is no tap, since there was one.
  bool isTapExplained_ = false;
  /// The tap has been stopped for a while because of timeouts.
  bool isTapResting_ = false;
  /// When everybody who runs has seen that the permission was taken away.
  std::optional<std::chrono::nanoseconds> trustIsKnownLost_;
};

}  // namespace keyrow::reliability
