#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "reliability/KeyPairs.h"
#include "reliability/ModeModel.h"
#include "sim/scenario/Scenario.h"
#include "sim/scenario/Stage.h"

namespace keyrow::reliability {

/// Plays lines of the scenario language one after the other, and holds Keyrow to its
/// promises after each: the last mode that somebody chose for all applications is the one that
/// is found (see `ModeModel`); what is stored was written once, and stays; an override never
/// becomes the global mode; the status item shows what was last written or read; whoever goes
/// leaves the global mode behind; nothing stays open; the tap lives, or somebody has said why not;
/// no tap lives without trust once Keyrow had a chance to see that.
class Session {
 public:
  Session();

  sim::Stage stage;
  KeyPairs keyPairs{stage.mac};

  /// Promises no chosen mode: things will fail, or end, at any point.
  void disturb() { isModelLeftOut_ = true; }

  /// Plays a line. Gives what is wrong afterwards; empty when all is well. A line that
  /// cannot be carried out as things stand changes nothing, and Keyrow may be killed in the
  /// middle of one.
  std::string play(const std::string& line);
  std::string play(const sim::Step& step);

  /// Lets everything work again, which brings the tap back, and quits. Gives what is wrong
  /// then.
  std::string end();

  /// After how many lines a chosen mode was promised.
  std::size_t promisedCount() const { return promisedCount_; }

 private:
  using App = std::optional<std::string>;

  /// What there was before a line, as far as its rules need it.
  struct Before {
    Modes modes;
    /// Keyrow has not seen yet what the system preference says.
    bool isPreferenceNews = false;
    std::optional<sim::OpenHandles::ProcessID> runningProcess;
    int runningCount = 0;
    App frontmost;
    std::size_t writtenCount = 0;
    bool isAsleep = false;
  };

  Before look();
  Modes actualModes();
  bool isDisturbed();
  std::string followChoice(const sim::Action& action, const Before& before);
  std::string wrongCommand(const sim::Action& action);
  bool canLook(const Before& before);
  bool canNotice();
  std::string wrongMode(bool isApplied);

  std::string wrongStorage(const sim::Action& action, const Before& before);
  std::string wrongLoss(const sim::Action& action, const Before& before);
  std::string wrongAdoption(const sim::Action& action, const Before& before);
  std::string wrongImage();
  std::string wrongFarewell(const Before& before);
  std::string wrongTap(const sim::Action& action, const Before& before, bool isDone);
  std::string wrongState(const Modes& left, bool isGone);
  bool hasLogged(std::string_view beginning);
  bool hasFailed(sim::PortCall call);
  bool hasAnyFault();
  bool mustHaveTap(const sim::Action& action, const Before& before);
  bool mustHaveStoppedTap(const sim::Action& action, const Before& before);
  void followTrust(const sim::Action& action);
  std::string wrongComeback();

  ModeModel model_;
  bool isModelLeftOut_ = false;
  std::size_t promisedCount_ = 0;
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
  /// A system preference may differ from what a process sees of it.
  bool hasFailedToSynchronize_ = false;
  /// The mode in the hardware came of an override that Keyrow wrote.
  bool isHardwareOfOverride_ = false;
  /// What each Keyrow left behind that has quit since the line began.
  std::vector<Modes> farewells_;
};

}  // namespace keyrow::reliability
