#include "sim/Applications.h"

#include <utility>

namespace keyrow::sim {

void Applications::uninstall(std::string_view bundleIdentifier) {
  const auto found = installed.find(bundleIdentifier);
  if (found != installed.end()) installed.erase(found);
}

void Applications::activate(std::optional<std::string> bundleIdentifier) {
  frontmost_ = std::move(bundleIdentifier);
  activationObservers.notify();
}

}  // namespace keyrow::sim
