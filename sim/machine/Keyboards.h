#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/HidManagers.h"
#include "platform/PropertyValue.h"
#include "sim/machine/ObserverList.h"

namespace keyrow::sim {

/// A HID device on the machine.
struct SimulatedKeyboard {
  /// Absent for a device whose service has no registry entry ID.
  std::optional<std::uint64_t> registryID;
  /// What `IOHIDDeviceGetProperty` gives for it.
  PropertyDictionary properties;
  /// What kind of device it is: `kHIDUsage_GD_Keyboard` unless told otherwise, on the
  /// generic desktop page.
  std::int64_t usage = hidUsage::keyboard;
  /// Whether another program has it to itself: its keys go there, and nowhere else.
  bool isExclusive = false;
};

/// One input, on its way to those who listen.
struct KeyboardInput {
  /// Null for an input whose sender the system does not name.
  std::shared_ptr<const SimulatedKeyboard> keyboard;
  std::uint32_t usagePage = 0;
  /// Mach absolute-time ticks.
  std::uint64_t timestamp = 0;
};

/// The HID devices attached to the machine. Main thread only.
class Keyboards {
 public:
  enum class Change { attached, removed };

  /// Attaches a device, in place of one of the same name.
  void attach(const std::string& name, SimulatedKeyboard keyboard);

  /// Takes a device away; false when there is none of that name.
  bool unplug(std::string_view name);

  /// The device of that name; null when there is none.
  std::shared_ptr<const SimulatedKeyboard> find(std::string_view name) const;

  /// The names of all that are attached.
  std::vector<std::string> attachedNames() const;

  /// Whether there ever was a device of that name.
  bool wasAttached(std::string_view name) const { return everAttached_.contains(name); }

  /// Changes a property of a device; does nothing when there is none of that name.
  void setProperty(std::string_view name, const std::string& key, PropertyValue value);

  /// All that are attached.
  std::vector<std::shared_ptr<const SimulatedKeyboard>> all() const;

  /// The name of the device with this registry entry ID, attached or not any more;
  /// absent when there never was one.
  std::optional<std::string> nameOf(std::optional<std::uint64_t> registryID) const;

  /// Delivers an input to all who listen.
  void deliver(const KeyboardInput& input) const { inputObservers_.notify(input); }

  /// Calls `handler` whenever a device was attached or taken away.
  Registration observeChanges(std::function<void(Change)> handler) {
    return changeObservers_.add(std::move(handler));
  }

  Registration observeInput(std::function<void(const KeyboardInput&)> handler) {
    return inputObservers_.add(std::move(handler));
  }

 private:
  std::map<std::string, std::shared_ptr<const SimulatedKeyboard>, std::less<>> attached_;
  std::set<std::string, std::less<>> everAttached_;
  std::map<std::uint64_t, std::string> names_;
  ObserverList<const KeyboardInput&> inputObservers_;
  ObserverList<Change> changeObservers_;
};

}  // namespace keyrow::sim
