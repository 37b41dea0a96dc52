#pragma once

#include <string>

#include "sim/scenario/Stage.h"

namespace keyrow::reliability {

/// What is held open that should be closed or released; empty when there is nothing.
std::string leaks(sim::Stage& stage);

/// Quits Keyrow, where it runs, with nothing to disturb it. Then says what is wrong when
/// keyboard or system preference are not in the stored global mode, a media key stays down, or
/// something is left open; empty when all is well.
std::string problemAfterQuit(sim::Stage& stage);

}  // namespace keyrow::reliability
