#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "platform/HidSystem.h"
#include "sim/machine/SimulatedMac.h"
#include "sim/ports/SimulatedProcess.h"

namespace keyrow::sim {

/// A simulated Mac with one process of Keyrow, not yet launched.
class SimulatedMacTest : public ::testing::Test {
 protected:
  SimulatedMac mac;
  std::unique_ptr<SimulatedProcess> process = std::make_unique<SimulatedProcess>(mac, 501);

  Keyrow& keyrow() { return process->keyrow(); }

  void store(std::string_view key, std::optional<PropertyValue> value) {
    mac.defaults.setValue(appIdentifier, key, std::move(value));
  }
  std::optional<PropertyValue> stored(std::string_view key) const {
    return mac.defaults.value(appIdentifier, key);
  }

  void setPreference(std::optional<PropertyValue> value) {
    mac.globalPreferences.setValue(GlobalPreferences::domain, FnStateController::fnStateDefaultsKey,
                                   std::move(value));
  }
  std::optional<PropertyValue> preference() const {
    return mac.globalPreferences.value(GlobalPreferences::domain,
                                       FnStateController::fnStateDefaultsKey);
  }

  void setHardware(FnState state) { mac.hid.setParameter(hidFKeyModeKey, rawValue(state)); }

  /// Every line logged so far, as "category level: message".
  std::vector<std::string> logLines() const {
    std::vector<std::string> lines;
    for (const auto& line : mac.log.lines()) {
      lines.push_back(line.entry.category + " " + std::string{logLevelName(line.entry.level)} +
                      ": " + line.entry.message);
    }
    return lines;
  }
};

}  // namespace keyrow::sim
