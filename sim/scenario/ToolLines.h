#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// The user types the command `keyrow` in a terminal.
struct RunTool {
  std::vector<std::string> arguments;
  bool isRoot = false;
  /// In whose session; absent for that of the user who is there.
  std::optional<std::string> user{};
  /// The user does not wait for its end.
  bool isInBackground = false;
  Outcome play(Stage& stage) const;
};

/// The user ends what runs in the terminal.
struct InterruptTool {
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
