#pragma once

#include "reliability/ModeModel.h"
#include "sim/scenario/Action.h"

namespace keyrow::reliability {

/// Whether it lets something fail that the model knows, until the next repair.
bool isKnownFault(const sim::Fail& fail);

/// Lets the model do what a line of a scenario does; false when it does not know what comes of
/// it. Of the lines that let something fail it takes only known faults.
bool happen(const sim::Action& action, ModeModel& model);

/// Whether these are just the keys of the shortcut that clears the override or flips the global
/// mode, or of the one that flips the override, as it is in the beginning.
bool isGlobalShortcut(const sim::Keys& keys);
bool isLocalShortcut(const sim::Keys& keys);

}  // namespace keyrow::reliability
