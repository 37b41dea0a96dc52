#pragma once

#include <nlohmann/json_fwd.hpp>

#include "sim/scenario/Stage.h"

namespace keyrow::desk {

/// What the stage shows: the menu bar, the keyboards, the applications, Keyrow's windows, and how
/// the Mac is set up. Looking changes nothing, and counts as no call of the system.
nlohmann::json snapshot(sim::Stage& stage);

}  // namespace keyrow::desk
