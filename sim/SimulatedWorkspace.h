#pragma once

#include "platform/Workspace.h"
#include "sim/SimulatedMac.h"

namespace keyrow::sim {

/// The machine's applications as a process sees them.
class SimulatedWorkspace final : public Workspace {
 public:
  SimulatedWorkspace(SimulatedMac& mac, OpenHandles::ProcessID process)
      : mac_{mac}, process_{process} {}

  std::optional<std::string> frontmostBundleIdentifier() override;
  bool isApplicationInstalled(std::string_view bundleIdentifier) override;
  ObserverToken observeActivation(std::function<void()> handler) override;

 private:
  SimulatedMac& mac_;
  const OpenHandles::ProcessID process_;
};

}  // namespace keyrow::sim
