#pragma once

#include <string>

#include "core/LocalToggleShortcut.h"
#include "sim/machine/PropertyText.h"

namespace keyrow::sim {

/// The shortcut on one line: key code, display name, menu key equivalent.
inline std::string shortcutText(const LocalToggleShortcut& shortcut) {
  return std::to_string(shortcut.keyCode) + " " + sim::quoted(shortcut.displayName) + " " +
         (shortcut.menuKeyEquivalent ? sim::quoted(*shortcut.menuKeyEquivalent) : "none");
}

}  // namespace keyrow::sim
