#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/HidSystem.h"
#include "platform/PropertyValue.h"
#include "sim/machine/Timeline.h"

namespace keyrow::sim {

/// The HID system behind its ports: the "HIDParameters" that it publishes, with the
/// function-key mode among them. Safe to use from any thread.
class HidHardware {
 public:
  explicit HidHardware(Timeline& timeline) : timeline_{timeline} {}

  /// "HIDParameters" as it stands: a dictionary, or whatever was put in its place.
  std::optional<PropertyValue> parameters() const;
  void setParameters(std::optional<PropertyValue> parameters);

  /// One entry of "HIDParameters"; absent when there is none.
  std::optional<PropertyValue> parameter(std::string_view key) const;

  /// Sets one entry, or removes it.
  void setParameter(std::string_view key, std::optional<PropertyValue> value);

  /// The mode (`hidFKeyModeKey`) in words: "special", "standard", or "unreadable" for all else.
  std::string_view modeName() const;

  /// The values that were written through a connection, oldest first; all of them, or those
  /// from the `start`-th on, counted from 0.
  std::vector<PropertyValue> writtenValues(std::size_t start = 0) const;
  std::size_t writtenCount() const;
  void noteWrittenValue(const PropertyValue& value);

 private:
  void publish(std::optional<PropertyValue> parameters);

  Timeline& timeline_;
  /// Guards the fields below.
  mutable std::mutex mutex_;
  std::optional<PropertyValue> parameters_ = PropertyDictionary{{std::string{hidFKeyModeKey}, 0}};
  std::vector<PropertyValue> writtenValues_;
};

}  // namespace keyrow::sim
