#pragma once

#include <string>
#include <vector>

#include "sim/ports/SimulatedPlatform.h"
#include "sim/ports/SimulatedStatusItemView.h"

namespace keyrow::sim {

/// The item in the menu bar in one line, such as: [fn] blue dot, "Local F-Key Mode".
std::string drawStatusItem(const SimulatedStatusItemView& item);

/// A menu, one line for each item and one for its tool tip.
std::string drawMenu(const std::vector<MenuItem>& items);

/// The pane of the settings window that is to be seen, control by control.
std::string drawSettings(SimulatedPlatform& platform);

}  // namespace keyrow::sim
