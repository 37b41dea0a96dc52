#pragma once

#include "reliability/ModeModel.h"
#include "sim/scenario/Action.h"

namespace keyrow::reliability {

/// What a line means to somebody who only cares for the global mode.
struct Meaning {
  /// Keyrow is told of it, and can notice what was chosen behind its back.
  bool isNoticed = false;
  /// Afterwards the keyboard is in the mode that belongs there.
  bool isApplied = false;
};

/// Tells the model what somebody did in a line.
Meaning happen(const sim::Action& action, ModeModel& model);

}  // namespace keyrow::reliability
