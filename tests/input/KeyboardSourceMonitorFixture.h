#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/HidManagers.h"
#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {

/// A keyboard source monitor that listens, on a Mac whose ticks are those of Apple silicon.
class KeyboardSourceMonitorFixture : public SimulatedMacTest {
 protected:
  /// A second of event time.
  static constexpr std::uint64_t tick = 1'000'000'000;

  using Keyboard = std::shared_ptr<const SimulatedKeyboard>;

  static constexpr std::uint32_t keyboardPage = hidPage::keyboardOrKeypad;

  /// All that is tried happens in the past.
  KeyboardSourceMonitorFixture() { mac.scheduler.advance(std::chrono::hours{1}); }

  void SetUp() override { monitor().startMonitoring(); }

  KeyboardSourceMonitor& monitor() { return keyrow().keyboardSourceMonitor(); }

  /// Starts the process anew on a machine with another time base.
  void restartWithTimebase(MachTimebase timebase) {
    mac.machTimebase = timebase;
    process = std::make_unique<SimulatedProcess>(mac, 501);
    monitor().startMonitoring();
  }

  /// A keyboard with these properties, and with a registry entry ID if one is given.
  static Keyboard makeKeyboard(std::optional<std::uint64_t> registryID,
                               PropertyDictionary properties) {
    return std::make_shared<const SimulatedKeyboard>(
        SimulatedKeyboard{.registryID = registryID, .properties = std::move(properties)});
  }

  /// A keyboard that `productAt` tells apart from others by its name.
  Keyboard namedKeyboard(const std::string& name) {
    return makeKeyboard(++lastRegistryID_, {{"Product", name}});
  }

  /// Lets the keyboard send an input at that mach tick.
  void input(const Keyboard& keyboard, std::uint64_t ticks) {
    mac.keyboards.deliver({keyboard, keyboardPage, ticks});
  }

  /// What the monitor answers for a key event at that mach tick.
  std::optional<KeyboardDeviceSource> sourceAt(std::uint64_t ticks) {
    const auto source = monitor().source(ticks);
    return source ? std::optional{*source} : std::nullopt;
  }

  /// The product of the keyboard that the event is attributed to; "none" without one.
  std::string productAt(std::uint64_t ticks) {
    const auto source = monitor().source(ticks);
    return source ? source->product.value_or("no product") : "none";
  }

  /// What the monitor makes of a keyboard that sends one input.
  std::optional<KeyboardDeviceSource> sourceOf(const Keyboard& keyboard) {
    input(keyboard, tick);
    return sourceAt(tick);
  }

 private:
  std::uint64_t lastRegistryID_ = 100;
};

}  // namespace keyrow::sim
