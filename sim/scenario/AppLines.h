#pragma once

#include <optional>
#include <string>

#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// An application is put on the Mac.
struct Install {
  std::string app;
  /// Whether it lies outside the folders for applications, where the system still finds it.
  bool isElsewhere = false;
  Outcome play(Stage& stage) const;
};

/// An application is thrown away.
struct Uninstall {
  std::string app;
  Outcome play(Stage& stage) const;
};

/// Something else comes to the front.
struct Front {
  /// Its bundle identifier; absent for an application without one, and for none at all.
  std::optional<std::string> app;
  /// Whether there is an application, though it has no identifier.
  bool isUnnamed = false;
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
