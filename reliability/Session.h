#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "reliability/KeyPairs.h"
#include "reliability/ModeModel.h"
#include "reliability/TapWatch.h"
#include "reliability/TopRowWatch.h"
#include "sim/scenario/Scenario.h"
#include "sim/scenario/Stage.h"
#include "sim/scenario/ToolLines.h"

namespace keyrow::reliability {

/// Plays lines of the scenario language one after the other, and holds Keyrow to its
/// promises after each: the last mode that somebody chose for all applications is the one that
/// is found (see `ModeModel`); what is stored was written once, and stays; an override never
/// becomes the global mode; the status item shows what was last written or read; whoever goes
/// leaves the global mode behind; nothing stays open; the tap lives, or somebody has said why not;
/// no tap lives without trust once Keyrow had a chance to see that; a keyboard with a mode of its
/// own goes by it.
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
    /// Keyrow has not seen yet what the system preference says, as far as is stored.
    bool isPreferenceNews = false;
    std::optional<sim::OpenHandles::ProcessID> runningProcess;
    int runningCount = 0;
    App frontmost;
    std::size_t writtenCount = 0;
    bool isAsleep = false;
    /// Of several instances, or one that hangs, some do not know what the others do.
    bool isContested = false;
    /// Who asks for the menu gets nothing new then.
    bool isMenuOpen = false;
  };

  /// What a Keyrow left behind.
  struct Farewell {
    std::string user;
    Modes modes;
    /// Whether it had the keyboard.
    bool isInFront = false;
  };

  Before look();
  Modes actualModes();
  ModeModel& model() { return models_[stage.mac.sessions.active()]; }
  void loseTrack();
  void changeUser(const std::string& left, const Before& before);
  bool isDisturbed();
  bool isContested();
  std::string followChoice(const sim::Action& action, const Before& before);
  std::string wrongCommand(const sim::Action& action);
  std::string wrongStore(const sim::RunTool& run, const Before& before);
  bool isAnswered(const sim::Action& action);
  bool canLook(const Before& before);
  bool canNotice();
  std::string wrongMode(bool isApplied);

  std::string wrongStorage(const sim::Action& action, const Before& before);
  std::string wrongLoss(const sim::Action& action, const Before& before);
  bool isNamed(std::string_view app) const;
  std::string wrongAdoption(const sim::Action& action, const Before& before);
  std::string wrongImage();
  std::string wrongFarewell(const Before& before);
  std::string wrongState(const Modes& left, bool hasKeyboard);

  TapWatch tap_{stage};
  TopRowWatch topRow_{stage};
  /// By user.
  std::map<std::string, ModeModel> models_;
  bool hasSwitchedUsers_ = false;
  bool isModelLeftOut_ = false;
  std::size_t promisedCount_ = 0;
  /// A system preference may differ from what a process sees of it.
  bool hasFailedToSynchronize_ = false;
  /// The mode in the hardware came of an override that Keyrow wrote.
  bool isHardwareOfOverride_ = false;
  /// What was written behind the command, in this line, or since it was first left to itself.
  std::vector<std::string> named_;
  bool isInBackground_ = false;
  /// What each Keyrow left behind that has quit since the line began.
  std::vector<Farewell> farewells_;
};

}  // namespace keyrow::reliability
