#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppIdentifier.h"
#include "platform/PropertyValue.h"
#include "sim/machine/PortCall.h"
#include "sim/machine/PropertyText.h"
#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {

inline constexpr auto textEdit = "com.apple.TextEdit";
inline constexpr auto safari = "com.apple.Safari";

/// The port calls on the way to a written mode: each of them can spoil it.
inline constexpr std::array callsOfAWrite{PortCall::findService, PortCall::openConnection,
                                          PortCall::setHidParameter};

/// The port calls on the way to a mode that is read.
inline constexpr std::array callsOfARead{PortCall::findService, PortCall::readServiceProperty};

/// The call's name in a form that a test name can have.
inline std::string testName(PortCall call) {
  std::string name{info(call).name};
  std::ranges::replace(name, '-', '_');
  return name;
}

/// Values that are no modes.
inline std::vector<PropertyValue> nonModes() {
  return {"",
          "one",
          "2",
          "00",
          " 1",
          "1.0",
          "true",
          "YES",
          "standard",
          PropertyDictionary{},
          0.5,
          50.0,
          -1.0,
          2,
          -1,
          7,
          PropertyDictionary{{"value", 1}}};
}

/// Values that stand for the standard mode, and for the special one.
inline std::vector<PropertyValue> standardModes() { return {1, 1.0, true, "1"}; }
inline std::vector<PropertyValue> specialModes() { return {0, 0.0, false, "0"}; }

/// Values that a setting which is an integer must not take for one.
inline std::vector<PropertyValue> nonIntegers() {
  return {false, true, 0.0,  1.0,
          "",    "0",  "1",  PropertyDictionary{},
          "one", 0.5,  50.0, PropertyDictionary{{"value", 1}}};
}

/// Values that a setting which is a string must not take for one.
inline std::vector<PropertyValue> nonStrings() {
  return {false, true,
          0,     1,
          0.5,   PropertyDictionary{},
          96,    PropertyDictionary{{"leftControl", "leftControl"}}};
}

/// Values that a setting which is a dictionary must not take for one.
inline std::vector<PropertyValue> nonDictionaries() {
  return {false, true, 0, 1, 0.5, "", "{com.apple.TextEdit=1}"};
}

/// What the tests of the core room share. After every test it checks that nothing of
/// the HID system is held any more.
class CoreTest : public SimulatedMacTest {
 protected:
  void TearDown() override {
    EXPECT_EQ(mac.openHandles.count("HidService"), 0);
    EXPECT_EQ(mac.openHandles.count("HidConnection"), 0);
  }

  /// All of Keyrow's settings, for example `{globalFnState=1}`, save what it keeps for itself.
  std::string storedSettings() const {
    auto stored = mac.defaults.domain(appIdentifier);
    stored.erase(std::string{settingsKey::lastSeenFnStatePreference});
    return stored.empty() ? "{}" : "{" + propertyText(PropertyValue{stored}) + "}";
  }

  /// Every value that was sent to the hardware, oldest first.
  std::vector<std::string> writtenValues() const {
    std::vector<std::string> texts;
    for (const auto& value : mac.hid.writtenValues()) texts.push_back(propertyText(value));
    return texts;
  }

  void makeHardwareUnreadable() { mac.hid.setParameters(std::nullopt); }
};

}  // namespace keyrow::sim
