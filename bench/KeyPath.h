#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "sim/machine/SimulatedMac.h"
#include "sim/ports/SimulatedProcess.h"

namespace keyrow::sim {

/// The path of a key event, from the event tap's callback to its verdict, in a Keyrow that
/// has been running for a while: 64 inputs of several keyboards are held.
class KeyPath {
 public:
  explicit KeyPath(int keyboardCount = 4, int sampleCount = 64);

  Keyrow& keyrow() { return process_.keyrow(); }
  void store(const std::string& key, const PropertyValue& value) {
    mac.defaults.setValue(appIdentifier, key, value);
  }

  /// Gives the keyboards, which are all of one model, a mode of their own.
  void storeOwnMode(FnState mode) {
    store("keyboardFnStates", PropertyDictionary{{"046d:c33f", rawValue(mode)}});
  }

  /// Whether the event passes. It happens at the time of the newest input.
  bool pass(std::uint32_t type, std::uint16_t keyCode, std::uint64_t flags = 0) {
    const KeyEvent event{.timestamp = now_, .flags = flags, .keyCode = keyCode};
    return handler_->handleTappedEvent(type, event) == TapVerdict::pass;
  }

  /// The keyboard of an event at the time of the newest input.
  bool isAttributed() { return keyrow().keyboardSourceMonitor().source(now_) != nullptr; }

  /// Lets the newest keyboard send inputs, so that so many are held.
  void sendInputs(int count);

  /// Does what the events have put on the main queue.
  void drainMainQueue() { mac.scheduler.runReady(); }

  SimulatedMac mac;

 private:
  SimulatedProcess process_{mac, 501};
  const std::shared_ptr<KeyEventHandler> handler_ = process_.keyrow().makeKeyEventHandler();
  std::shared_ptr<const SimulatedKeyboard> newest_;
  /// Mach ticks.
  std::uint64_t now_ = 1'000'000'000;
};

}  // namespace keyrow::sim
