#pragma once

#include <string>
#include <utility>
#include <vector>

#include "sim/ports/SimulatedPlatform.h"

namespace keyrow::sim {

/// What the controls of both panes show: the name that scenarios use, and the state.
std::vector<std::pair<std::string, std::string>> paneState(SimulatedPlatform& platform);

/// Whether the tab of the General pane is selected, and not that of the About pane.
bool isGeneralSelected(SimulatedPlatform& platform);

/// The controls of the pane that is to be seen, in its order.
std::vector<SimulatedControl> openControls(SimulatedPlatform& platform);

}  // namespace keyrow::sim
