#pragma once

#include <string>

#include "sim/scenario/Stage.h"
#include "sim/scenario/ToolLines.h"

namespace keyrow::reliability {

/// What the command says that it has done, and what is not stored; empty when all is well, or
/// nothing was said.
std::string wrongResult(sim::Stage& stage, const sim::RunTool& run);

}  // namespace keyrow::reliability
