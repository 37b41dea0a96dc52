#pragma once

#include <string>
#include <vector>

#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// The user types the command `keyrow` in a terminal.
struct RunTool {
  std::vector<std::string> arguments;
  bool isRoot = false;
  /// The user does not wait for its end.
  bool isInBackground = false;
  Outcome play(Stage& stage) const;
};

/// The user ends what runs in the terminal.
struct InterruptTool {
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
