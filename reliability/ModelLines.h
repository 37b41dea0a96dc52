#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/FnState.h"
#include "reliability/ModeModel.h"

namespace keyrow::reliability {

/// The mode that scenarios call so; absent for all else.
std::optional<FnState> modeNamed(std::string_view name);

/// Whether the line lets something fail that the model knows, until the next repair.
bool isKnownFault(const std::string& line);

/// Lets the model do what a line of a scenario says; false when it does not know the line.
/// Of the lines that let something fail it takes only known faults.
bool happen(const std::string& line, ModeModel& model);

}  // namespace keyrow::reliability
