#include "sim/SimulatedWorkspace.h"

#include <memory>
#include <utility>

namespace keyrow::sim {

std::optional<std::string> SimulatedWorkspace::frontmostBundleIdentifier() {
  if (mac_.strikes(PortCall::frontmostApplication)) return std::nullopt;
  return mac_.applications.frontmost();
}

bool SimulatedWorkspace::isApplicationInstalled(std::string_view bundleIdentifier) {
  if (mac_.strikes(PortCall::findApplication)) return false;
  return mac_.applications.isInstalled(bundleIdentifier);
}

ObserverToken SimulatedWorkspace::observeActivation(std::function<void()> handler) {
  auto handle = std::make_shared<OpenHandle>(mac_.openHandles, "observer", process_);
  return mac_.applications.observeActivation(
      [handle = std::move(handle), handler = std::move(handler)] { handler(); });
}

}  // namespace keyrow::sim
