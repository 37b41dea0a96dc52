#pragma once

#include <optional>

#include "platform/PropertyValue.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// The user starts Keyrow.
struct Launch {
  Outcome play(Stage& stage) const;
};

/// Which Keyrow a line means; where it is absent, the one that was launched last of those that
/// run.
using MeantProcess = std::optional<OpenHandles::ProcessID>;

/// The user opens the running Keyrow, in Finder or in the Dock.
struct Reopen {
  MeantProcess process;
  Outcome play(Stage& stage) const;
};

/// The user quits Keyrow.
struct Quit {
  MeantProcess process;
  Outcome play(Stage& stage) const;
};

/// The user logs out.
struct LogOut {
  Outcome play(Stage& stage) const;
};

/// Keyrow ends at once and without a word.
struct Kill {
  MeantProcess process;
  Outcome play(Stage& stage) const;
};

/// Keyrow stops answering.
struct HangUp {
  MeantProcess process;
  Hang behaviour = Hang::reachable;
  Outcome play(Stage& stage) const;
};

/// Keyrow answers again.
struct Resume {
  MeantProcess process;
  Outcome play(Stage& stage) const;
};

/// Some process posts the notification by which a new instance tells an older one to go.
struct PostTakeover {
  PropertyDictionary userInfo;

  /// Whether it tells this process to go.
  bool isMeantFor(OpenHandles::ProcessID process) const;
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
