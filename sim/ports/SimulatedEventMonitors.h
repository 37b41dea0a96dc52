#pragma once

#include <functional>
#include <memory>

#include "platform/EventMonitors.h"
#include "sim/ports/ProcessContext.h"

namespace keyrow::sim {

/// Event monitors of one process: they see the key events that reach it, or another
/// application.
class SimulatedEventMonitors final : public EventMonitors {
 public:
  /// `keyDown` gets the keys of this application that no monitor consumes.
  SimulatedEventMonitors(const ProcessContext& context,
                         std::function<void(const KeyDown&)> keyDown);

  Registration addGlobalFlagsMonitor(std::function<void()> handler) override;
  Registration addLocalFlagsMonitor(std::function<void()> handler) override;
  Registration addLocalKeyDownMonitor(std::function<bool(const KeyDown&)> handler) override;

 private:
  /// A key on its way through the monitors.
  struct PassingKey {
    KeyDown key;
    bool isConsumed = false;
  };

  void receive(std::uint32_t type, const KeyEvent& event);

  const ProcessContext& context_;
  const std::function<void(const KeyDown&)> keyDown_;
  ObserverList<> globalFlags_;
  ObserverList<> localFlags_;
  ObserverList<std::shared_ptr<PassingKey>> keysDown_;
  Registration keyEvents_;
};

}  // namespace keyrow::sim
