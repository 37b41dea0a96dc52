#pragma once

#include <optional>
#include <string>

#include "core/FnState.h"
#include "reliability/ModeModel.h"
#include "sim/machine/PortCall.h"
#include "sim/scenario/Stage.h"

namespace keyrow::reliability {

// What can be seen on a stage from outside.

/// What a user's system preference says; absent where it is none.
std::optional<FnState> systemPreference(sim::Stage& stage, const std::string& user);

/// The modes as a user has them, without what Keyrow shows.
Modes modesOf(sim::Stage& stage, const std::string& user);

/// Whether this call, or any, has failed since the line began.
bool hasFailed(sim::Stage& stage, sim::PortCall call);
bool hasAnyFault(sim::Stage& stage);

}  // namespace keyrow::reliability
