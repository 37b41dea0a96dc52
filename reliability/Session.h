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
/// promises after each: what is stored was written once, and stays; an override never becomes
/// the global mode; the status item shows what was last written or read; whoever goes leaves
/// the global mode behind; nothing stays open; the tap lives, or somebody has said why not; no tap
/// lives without trust once Keyrow had a chance to see that. As
/// long as nothing happens that `ModeModel` does not know, everything is as that says, too.
class Session {
 public:
  Session();

  sim::Stage stage;
  KeyPairs keyPairs{stage.mac};

  /// Leaves the model out: things will fail, or end, that it does not know.
  void disturb() { isModelLeftOut_ = true; }

  /// Plays a line. Gives what is wrong afterwards; empty when all is well. A line that
  /// cannot be carried out as things stand changes nothing, and Keyrow may be killed in the
  /// middle of one.
  std::string play(const std::string& line);
  std::string play(const sim::Step& step);

  /// Lets everything work again, which brings the tap back, and quits. Gives what is wrong
  /// then.
  std::string end();

  /// How many lines were carried out of which the model knew what would come.
  std::size_t comparedCount() const { return comparedCount_; }

 private:
  /// What there was before a line, as far as its rules need it.
  struct Before {
    ModeModel::State state;
    std::optional<sim::OpenHandles::ProcessID> runningProcess;
    int runningCount = 0;
    /// What the button of the per-app shortcut says.
    std::string shortcutTitle;
    std::size_t writtenCount = 0;
    bool isAnythingHeld = false;
    bool isTapWorking = false;
    bool isAsleep = false;
  };

  Before look();
  ModeModel::State actualState();
  bool isDisturbed();
  /// Lets the model do what the line does; false when it does not know the line.
  bool tellModel(const sim::Action& action, const Before& before);
  bool isHidden(const sim::Keys& keys);
  static bool givesKeysAnotherMeaning(const sim::Action& action, const Before& before);
  bool followFrontmost();
  bool canFollowSwitch() const;
  void adoptActual(bool isSwitch);
  std::string compareWithModel();

  std::string wrongStorage(const sim::Action& action, const Before& before);
  std::string wrongLoss(const sim::Action& action, const Before& before);
  std::string wrongAdoption(const sim::Action& action, const Before& before);
  std::string wrongImage();
  std::string wrongFarewell(const Before& before);
  std::string wrongTap(const sim::Action& action, const Before& before, bool isDone);
  std::string wrongState(const ModeModel::State& left, bool isGone);
  bool hasLogged(std::string_view beginning);
  bool hasFailed(sim::PortCall call);
  bool hasFailedToWrite();
  bool mustHaveTap(const sim::Action& action, const Before& before);
  bool mustHaveStoppedTap(const sim::Action& action, const Before& before);
  void followTrust(const sim::Action& action);
  std::string wrongComeback();

  ModeModel model_;
  bool isModelLeftOut_ = false;
  std::size_t comparedCount_ = 0;
  /// Something fails in a way that the model does not know, until the next repair.
  bool hasUnknownFault_ = false;
  /// Keyrow may know another previous application than the model.
  bool isPreviousUncertain_ = false;
  /// A failed reading is tried again later, and may change what is shown.
  bool isShownUncertain_ = false;
  /// The last mode that was to be written may have failed to be.
  bool isWriteUncertain_ = false;
  /// Keys are held, or settings were made, that give keys another meaning.
  bool areKeysUncertain_ = false;
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
  std::vector<ModeModel::State> farewells_;
};

}  // namespace keyrow::reliability
