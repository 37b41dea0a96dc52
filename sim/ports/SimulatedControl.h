#pragma once

#include <string>

namespace keyrow::sim {

/// Something in a pane that can be clicked.
struct SimulatedControl {
  /// What is written on it.
  std::string title;
  bool isEnabled = true;
};

}  // namespace keyrow::sim
