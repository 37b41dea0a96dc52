#pragma once

#include "platform/EventMonitors.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Event monitors of one process: they see the key events that reach it, or another
/// application.
class SimulatedEventMonitors final : public EventMonitors {
 public:
  explicit SimulatedEventMonitors(const ProcessContext& context);

  Registration addGlobalFlagsMonitor(std::function<void()> handler) override;
  Registration addLocalFlagsMonitor(std::function<void()> handler) override;
  Registration addLocalKeyDownMonitor(std::function<bool(const KeyDown&)> handler) override;

 private:
  void receive(std::uint32_t type, const KeyEvent& event);

  const ProcessContext& context_;
  ObserverList<> globalFlags_;
  ObserverList<> localFlags_;
  ObserverList<const KeyDown&> keysDown_;
  Registration keyEvents_;
};

}  // namespace keyrow::sim
