#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "tests/input/KeyboardSourceMonitorFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

class KeyboardSourceMonitorLogTest : public KeyboardSourceMonitorFixture {
 protected:
  void setDiagnostics(bool enabled) {
    keyrow().settings().set(BooleanSetting::enhancedDiagnosticsEnabled, enabled);
  }

  const PropertyDictionary usbProperties{{"Built-In", false},
                                         {"VendorID", 1133},
                                         {"Transport", "USB"},
                                         {"Manufacturer", "Logitech"},
                                         {"Product", "G Pro"}};
  const PropertyDictionary builtInProperties{
      {"Built-In", true}, {"VendorID", 1452}, {"Transport", "SPI"}, {"Manufacturer", "Apple"}};
  const Keyboard usb = makeKeyboard(1, usbProperties);
  const Keyboard builtIn = makeKeyboard(2, builtInProperties);

  const std::string usbLine =
      "hardware info: Observed keyboard source: kind=external keyboard, builtIn=false, "
      "transport=USB, mediaTranslationEligible=true";
  const std::string detailedUsbLine =
      "hardware info: Observed keyboard source: kind=external keyboard, builtIn=false, "
      "transport=USB, manufacturer=Logitech, product=G Pro, mediaTranslationEligible=true";
  const std::string builtInLine =
      "hardware info: Observed keyboard source: kind=built-in keyboard, builtIn=true, "
      "transport=SPI, mediaTranslationEligible=false";
  const std::string detailedBuiltInLine =
      "hardware info: Observed keyboard source: kind=built-in keyboard, builtIn=true, "
      "transport=SPI, manufacturer=Apple, product=nil, mediaTranslationEligible=false";
};

TEST_F(KeyboardSourceMonitorLogTest, IntroducesEachKeyboardOnce) {
  for (int count = 0; count < 3; ++count) {
    input(usb, tick);
    input(builtIn, tick);
  }
  EXPECT_THAT(logLines(), ElementsAre(usbLine, builtInLine));
}

TEST_F(KeyboardSourceMonitorLogTest, SaysNothingBeforeTheFirstInput) {
  mac.keyboards.attach("usb", *usb);
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(KeyboardSourceMonitorLogTest, NamesTheKeyboardWithEnhancedDiagnostics) {
  setDiagnostics(true);
  input(usb, tick);
  input(builtIn, tick);
  EXPECT_THAT(logLines(), ElementsAre(detailedUsbLine, detailedBuiltInLine));
}

TEST_F(KeyboardSourceMonitorLogTest, IntroducesEachKeyboardAgainAfterTheDiagnosticsChanged) {
  input(usb, tick);
  input(builtIn, tick);

  setDiagnostics(true);
  EXPECT_EQ(logLines().size(), 2U);
  for (int count = 0; count < 2; ++count) input(usb, tick);
  EXPECT_THAT(logLines(), ElementsAre(usbLine, builtInLine, detailedUsbLine));
  for (int count = 0; count < 2; ++count) input(builtIn, tick);

  setDiagnostics(false);
  for (int count = 0; count < 2; ++count) input(builtIn, tick);
  EXPECT_THAT(logLines(),
              ElementsAre(usbLine, builtInLine, detailedUsbLine, detailedBuiltInLine, builtInLine));
}

TEST_F(KeyboardSourceMonitorLogTest, ReadsTheDiagnosticsSettingAfreshForEveryLine) {
  input(usb, tick);
  // Behind the back of the settings: nothing is posted, so nothing is logged again.
  store("enhancedDiagnosticsEnabled", true);
  input(usb, tick);
  input(builtIn, tick);
  EXPECT_THAT(logLines(), ElementsAre(usbLine, detailedBuiltInLine));
}

TEST_F(KeyboardSourceMonitorLogTest, ChangingTheDiagnosticsWhileStoppedLogsNothing) {
  input(usb, tick);
  monitor().stopMonitoring();
  setDiagnostics(true);
  input(usb, tick);
  EXPECT_THAT(logLines(), ElementsAre(usbLine));
}

TEST_F(KeyboardSourceMonitorLogTest, OtherSettingsDoNotLogAgain) {
  input(usb, tick);
  keyrow().settings().set(BooleanSetting::showCapsLockIndicator, true);
  keyrow().settings().set(BooleanSetting::applyFnModeToExternalFunctionKeys, true);
  input(usb, tick);
  EXPECT_THAT(logLines(), ElementsAre(usbLine));
}

TEST_F(KeyboardSourceMonitorLogTest, TwoKeyboardsOfOneModelAreBothIntroduced) {
  input(makeKeyboard(1, usbProperties), tick);
  input(makeKeyboard(3, usbProperties), tick);
  EXPECT_THAT(logLines(), ElementsAre(usbLine, usbLine));
}

TEST_F(KeyboardSourceMonitorLogTest, ADeviceWithoutRegistryIDIsIntroducedOnce) {
  const auto keyboard = makeKeyboard(std::nullopt, usbProperties);
  for (int count = 0; count < 3; ++count) input(keyboard, tick);
  EXPECT_THAT(logLines(), ElementsAre(usbLine));
}

TEST_F(KeyboardSourceMonitorLogTest, ADeviceWithoutRegistryIDIsIntroducedAgainWhenItDiffers) {
  const auto changedOnlyInLocation = [this](int location) {
    auto properties = usbProperties;
    properties.insert_or_assign("LocationID", location);
    return makeKeyboard(std::nullopt, std::move(properties));
  };
  for (const int location : {1, 2, 1, 2}) input(changedOnlyInLocation(location), tick);
  EXPECT_THAT(logLines(), ElementsAre(usbLine, usbLine));
}

TEST_F(KeyboardSourceMonitorLogTest, ADeviceWithoutRegistryIDIsIntroducedAgainAfterAChange) {
  const auto keyboard = makeKeyboard(std::nullopt, usbProperties);
  input(keyboard, tick);
  setDiagnostics(true);
  for (int count = 0; count < 2; ++count) input(keyboard, tick);
  EXPECT_THAT(logLines(), ElementsAre(usbLine, detailedUsbLine));
}

TEST_F(KeyboardSourceMonitorLogTest, CallsTheSpiKeyboardOfAnotherMakerEligible) {
  input(makeKeyboard(1, {{"Transport", "SPI"}, {"Manufacturer", "Keychron"}}), tick);
  EXPECT_THAT(logLines(),
              ElementsAre("hardware info: Observed keyboard source: kind=built-in keyboard, "
                          "builtIn=nil, transport=SPI, mediaTranslationEligible=true"));
}

TEST_F(KeyboardSourceMonitorLogTest, WritesUnderTheApplicationsSubsystem) {
  input(usb, tick);
  const auto lines = mac.log.lines();
  ASSERT_EQ(lines.size(), 1U);
  EXPECT_EQ(lines[0].entry.subsystem, appIdentifier);
  EXPECT_EQ(lines[0].process, 501);
}

}  // namespace
}  // namespace keyrow::sim
