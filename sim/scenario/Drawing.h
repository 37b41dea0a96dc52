#pragma once

#include <string>
#include <vector>

#include "sim/ports/SimulatedPlatform.h"
#include "sim/ports/SimulatedStatusItemView.h"

namespace keyrow::sim {

/// The item in the menu bar in one line, such as: [fn] blue dot, "Local F-Key Mode".
std::string drawStatusItem(const SimulatedStatusItemView& item);

/// The key equivalent as the menu shows it, such as "⌘q"; empty when there is none.
std::string keyText(const MenuItem& item);

/// A menu, one line for each item and one for its tool tip.
std::string drawMenu(const std::vector<MenuItem>& items);

/// The pane of the settings window that is to be seen, control by control.
std::string drawSettings(SimulatedPlatform& platform);

}  // namespace keyrow::sim
