#pragma once

#include <string>
#include <utility>
#include <vector>

#include "sim/ports/SimulatedPlatform.h"

namespace keyrow::sim {

/// What the controls of both panes show: the name that scenarios use, and the state.
std::vector<std::pair<std::string, std::string>> paneState(SimulatedPlatform& platform);

/// The titles of the controls that can be clicked in the open pane.
std::vector<std::string> controlTitles(SimulatedPlatform& platform);

}  // namespace keyrow::sim
