#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#include <IOKit/IOKitLib.h>
#include <IOKit/hid/IOHIDUsageTables.h>
#include <IOKit/hidsystem/IOHIDParameter.h>
#include <IOKit/hidsystem/IOHIDShared.h>
#include <gtest/gtest.h>

#include "core/FnStateController.h"
#include "platform/macos/IOObject.h"
#include "platform/macos/tests/ThrowAwayDefaults.h"

namespace keyrow::macos {
namespace {

static_assert(hidSystemClass == kIOHIDSystemClass);
static_assert(hidParamConnectType == kIOHIDParamConnectType);
static_assert(capsLockState == kIOHIDCapsLockState);
static_assert(hidParametersKey == kIOHIDParametersKey);
static_assert(hidFKeyModeKey == kIOHIDFKeyModeKey);
static_assert(hidPage::genericDesktop == kHIDPage_GenericDesktop);
static_assert(hidPage::keyboardOrKeypad == kHIDPage_KeyboardOrKeypad);
static_assert(hidUsage::keyboard == kHIDUsage_GD_Keyboard);
static_assert(hidUsage::keypad == kHIDUsage_GD_Keypad);
static_assert(ioReturnSuccess == kIOReturnSuccess);
static_assert(ioReturnExclusiveAccess == kIOReturnExclusiveAccess);

class MacHidSystemTest : public ::testing::Test {
 protected:
  const IOObject service = IOObject::adopt(
      IOServiceGetMatchingService(kIOMainPortDefault, IOServiceMatching(kIOHIDSystemClass)));
  const std::unique_ptr<HidSystem> hidSystem = makeHidSystem();

  void SetUp() override {
    if (!service) GTEST_SKIP() << "This Mac has no HID system, as some virtual ones.";
  }

  /// The number that the registry holds for the mode; nil when it holds none.
  NSNumber* registryMode() const {
    NSDictionary* const parameters = CFBridgingRelease(IORegistryEntryCreateCFProperty(
        service.get(), CFSTR(kIOHIDParametersKey), kCFAllocatorDefault, kNilOptions));
    return parameters[@kIOHIDFKeyModeKey];
  }
};

TEST_F(MacHidSystemTest, FindsTheServiceAndNoOther) {
  EXPECT_NE(hidSystem->matchingService(hidSystemClass), nullptr);
  EXPECT_EQ(hidSystem->matchingService("KeyrowHasNoSuchService"), nullptr);
}

TEST_F(MacHidSystemTest, ReadsTheModeThatTheRegistryHolds) {
  const std::unique_ptr<GlobalPreferences> globalPreferences = makeGlobalPreferences();
  const ThrowAwayDefaults suite;
  const auto userDefaults = makeUserDefaults(suite.name());
  StoredFnStates storedFnStates{*userDefaults};
  const std::unique_ptr<SystemLog> systemLog = makeSystemLog();
  const auto logger = systemLog->makeLogger("app.keyrow.Keyrow.mac-tests", "state");
  FnStateController controller{{.hidSystem = *hidSystem,
                                .globalPreferences = *globalPreferences,
                                .storedFnStates = storedFnStates,
                                .stateLog = *logger}};

  NSNumber* const mode = registryMode();
  const auto state = controller.readFnState();
  if (!mode) {
    // No keyboard with a top row to switch was ever here.
    ASSERT_FALSE(state.has_value());
    EXPECT_EQ(state.error(), KeyboardControllerError::readFailed);
    return;
  }
  ASSERT_TRUE(state.has_value());
  EXPECT_EQ(rawValue(*state), mode.longLongValue);
}

TEST_F(MacHidSystemTest, HasNoValueForAMissingProperty) {
  const auto found = hidSystem->matchingService(hidSystemClass);
  ASSERT_NE(found, nullptr);
  EXPECT_EQ(found->entry("KeyrowHasNoSuchProperty", hidFKeyModeKey), std::nullopt);
  EXPECT_EQ(found->entry(hidParametersKey, "KeyrowHasNoSuchEntry"), std::nullopt);
  // A text, and no dictionary.
  EXPECT_EQ(found->entry("IOClass", hidFKeyModeKey), std::nullopt);
}

}  // namespace
}  // namespace keyrow::macos
