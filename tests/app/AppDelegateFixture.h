#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {

/// Keyrow before its launch, among a few applications; the stored global mode is special.
class AppDelegateFixture : public SimulatedMacTest {
 protected:
  static constexpr auto textEdit = "com.apple.TextEdit";
  static constexpr auto safari = "com.apple.Safari";
  static constexpr auto systemSettings = "com.apple.SystemSettings";
  static constexpr auto systemPreferences = "com.apple.systempreferences";

  const std::string readFailed =
      "state error: Failed to read the current function key mode from hardware: Failed to read the "
      "function key mode.";
  const std::string leftSystemSettings =
      "state notice: Synchronized the stored global function key mode from hardware after leaving "
      "System Settings: standard function keys.";
  const std::string switchedApps =
      "state notice: Synchronized the stored global function key mode from hardware during app "
      "switch: standard function keys.";

  void SetUp() override {
    for (const auto* identifier : {textEdit, safari, systemSettings, systemPreferences}) {
      mac.applications.install(identifier);
    }
    store("globalFnState", 0);
  }

  void launchWithFrontmost(std::optional<std::string> identifier) {
    mac.applications.activate(std::move(identifier));
    process->launch();
  }

  void storeOverride(std::string_view identifier, FnState state) {
    store("localFnState", PropertyDictionary{{std::string{identifier}, rawValue(state)}});
  }

  /// The modes that were written to the hardware since the last call.
  std::vector<PropertyValue> takeWrittenModes() {
    auto all = mac.hid.writtenValues();
    std::vector<PropertyValue> recent{all.begin() + seenWrites_, all.end()};
    seenWrites_ = static_cast<std::ptrdiff_t>(all.size());
    return recent;
  }

 private:
  std::ptrdiff_t seenWrites_ = 0;
};

}  // namespace keyrow::sim
