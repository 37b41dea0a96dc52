#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sim/scenario/Stage.h"

namespace keyrow::desk {

/// A key of a keyboard's top row, and what pressing it alone would do now.
struct TopRowKey {
  /// "F1" to "F12".
  std::string name;
  /// What it does, such as "brightness down"; its own name where it is that key.
  std::string does;
  /// Whether that is Keyrow's doing, and not the keyboard's own.
  bool isTranslated = false;
};

/// The top row of the keyboard of that name, which is attached. Where no event tap would see a
/// key, the row is as it would be without Keyrow.
std::vector<TopRowKey> topRow(sim::Stage& stage, std::string_view keyboard);

}  // namespace keyrow::desk
