#include "input/KeyboardSourceMonitor.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/input/FakeHidManagers.h"
#include "tests/input/KeyboardSourceMonitorFixture.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

/// A process whose monitor does not listen yet.
class KeyboardSourceMonitorTest : public KeyboardSourceMonitorFixture {
 protected:
  void SetUp() override {}

  int openManagers() const { return mac.openHandles.count("HidManager"); }

  const Keyboard keyboard = namedKeyboard("Pro");
};

TEST_F(KeyboardSourceMonitorTest, ListensOnlyWhileItRuns) {
  input(keyboard, tick);
  EXPECT_EQ(productAt(tick), "none");
  EXPECT_EQ(openManagers(), 0);

  monitor().startMonitoring();
  EXPECT_EQ(openManagers(), 1);
  input(keyboard, tick);
  EXPECT_EQ(productAt(tick), "Pro");

  monitor().stopMonitoring();
  EXPECT_EQ(openManagers(), 0);
  EXPECT_EQ(productAt(tick), "none");
  input(keyboard, tick);
  EXPECT_EQ(productAt(tick), "none");
}

TEST_F(KeyboardSourceMonitorTest, StartingTwiceOpensOneManager) {
  monitor().startMonitoring();
  input(keyboard, tick);
  monitor().startMonitoring();
  EXPECT_EQ(openManagers(), 1);
  EXPECT_EQ(productAt(tick), "Pro");
}

TEST_F(KeyboardSourceMonitorTest, StoppingWithoutHavingStartedDoesNothing) {
  monitor().stopMonitoring();
  EXPECT_EQ(openManagers(), 0);
  EXPECT_EQ(logLines(), std::vector<std::string>{});
}

TEST_F(KeyboardSourceMonitorTest, AFailedOpenIsLoggedWithItsCodeAndClosesTheManager) {
  mac.faults.fail(PortCall::openHidManager, 1);
  monitor().startMonitoring();
  EXPECT_THAT(
      logLines(),
      ElementsAre("hardware error: Failed to start keyboard source monitoring: -536870174"));
  EXPECT_EQ(openManagers(), 0);
  input(keyboard, tick);
  EXPECT_EQ(productAt(tick), "none");
}

TEST_F(KeyboardSourceMonitorTest, ALaterStartTriesAgainAfterAFailedOpen) {
  mac.faults.fail(PortCall::openHidManager, 2);
  monitor().startMonitoring();
  monitor().startMonitoring();
  EXPECT_THAT(
      logLines(),
      ElementsAre("hardware error: Failed to start keyboard source monitoring: -536870174"));

  monitor().startMonitoring();
  EXPECT_EQ(openManagers(), 1);
  input(keyboard, tick);
  EXPECT_EQ(productAt(tick), "Pro");
}

TEST_F(KeyboardSourceMonitorTest, StoppingAfterAFailedOpenDoesNothing) {
  mac.faults.fail(PortCall::openHidManager, 1);
  monitor().startMonitoring();
  monitor().stopMonitoring();
  EXPECT_EQ(openManagers(), 0);
  EXPECT_EQ(logLines().size(), 1U);
}

TEST_F(KeyboardSourceMonitorTest, StoppingAndStartingForgetsSamples) {
  monitor().startMonitoring();
  input(keyboard, tick);
  monitor().stopMonitoring();
  monitor().startMonitoring();
  EXPECT_EQ(productAt(tick), "none");
}

TEST_F(KeyboardSourceMonitorTest, StoppingAndStartingForgetsKeyboards) {
  monitor().startMonitoring();
  input(makeKeyboard(9, {{"Product", "Old"}}), tick);
  monitor().stopMonitoring();
  monitor().startMonitoring();
  input(makeKeyboard(9, {{"Product", "New"}}), tick);
  EXPECT_EQ(productAt(tick), "New");
}

TEST_F(KeyboardSourceMonitorTest, StoppingAndStartingForgetsWhatWasLogged) {
  const std::string line =
      "hardware info: Observed keyboard source: kind=unknown keyboard, builtIn=nil, "
      "transport=nil, mediaTranslationEligible=true";
  monitor().startMonitoring();
  input(keyboard, tick);
  input(keyboard, tick);
  EXPECT_THAT(logLines(), ElementsAre(line));
  monitor().stopMonitoring();
  monitor().startMonitoring();
  input(keyboard, tick);
  EXPECT_THAT(logLines(), ElementsAre(line, line));
}

TEST_F(KeyboardSourceMonitorTest, ProcessesListenIndependently) {
  SimulatedProcess other{mac, 502};
  other.keyrow().keyboardSourceMonitor().startMonitoring();
  monitor().startMonitoring();
  EXPECT_EQ(openManagers(), 2);
  monitor().stopMonitoring();
  input(keyboard, tick);
  EXPECT_EQ(productAt(tick), "none");
  EXPECT_NE(other.keyrow().keyboardSourceMonitor().source(tick), nullptr);
}

TEST_F(KeyboardSourceMonitorTest, LeavesNothingOpenWhenItGoesWhileListening) {
  monitor().startMonitoring();
  process.reset();
  EXPECT_TRUE(mac.openHandles.all().empty());
  input(keyboard, tick);
}

TEST_F(KeyboardSourceMonitorTest, ListensToKeyboardsAndKeypadsOnly) {
  monitor().startMonitoring();
  for (std::int64_t usage = 0; usage <= 10; ++usage) {
    const auto device = std::make_shared<const SimulatedKeyboard>(
        SimulatedKeyboard{.registryID = 0, .properties = {{"Product", "Device"}}, .usage = usage});
    // Far enough apart to be out of reach of the one before.
    const auto now = tick * static_cast<std::uint64_t>(usage + 1);
    input(device, now);
    const bool isKeyboard = usage == hidUsage::keyboard || usage == hidUsage::keypad;
    EXPECT_EQ(productAt(now), isKeyboard ? "Device" : "none") << "usage " << usage;
  }
}

TEST_F(KeyboardSourceMonitorTest, IgnoresAnInputWithoutASender) {
  monitor().startMonitoring();
  input(nullptr, tick);
  EXPECT_EQ(productAt(tick), "none");
  // It did not count as a sample: the keyboard's is still the only one, and matches afar.
  input(keyboard, tick - 3'000'000);
  EXPECT_EQ(productAt(tick), "Pro");
}

class FakeHidDevice final : public HidDevice {
 public:
  std::optional<std::uint64_t> registryEntryID() override { return std::nullopt; }
  std::optional<PropertyValue> property(std::string_view) override { return std::nullopt; }
};

/// A monitor beside the process's own, on managers that hold back nothing.
class KeyboardSourceMonitorOnFakeManagersTest : public KeyboardSourceMonitorTest {
 protected:
  FakeHidManagers managers;
  FakeHidDevice device;
  KeyboardSourceMonitor onFakes{
      {.hidManagers = managers,
       .inputMonitoring = process->platform().inputMonitoring,
       .clock = process->platform().clock,
       .text = process->platform().text,
       .settings = keyrow().settings(),
       .hardwareLog = keyrow().diagnosticsLog().logger(LogCategory::hardware)}};
};

TEST_F(KeyboardSourceMonitorOnFakeManagersTest, MatchesKeyboardsAndKeypadsAndTheirKeyboardPage) {
  onFakes.startMonitoring();
  EXPECT_THAT(managers.deviceMatching,
              ElementsAre(PropertyDictionary{{"DeviceUsagePage", 1}, {"DeviceUsage", 6}},
                          PropertyDictionary{{"DeviceUsagePage", 1}, {"DeviceUsage", 7}}));
  EXPECT_EQ(managers.inputValueMatching, (PropertyDictionary{{"UsagePage", 7}}));
}

TEST_F(KeyboardSourceMonitorOnFakeManagersTest, IsReadyToListenBeforeItOpensTheManager) {
  onFakes.startMonitoring();
  EXPECT_THAT(managers.calls, ElementsAre("create", "device matching", "input value matching",
                                          "register", "schedule", "open"));
  managers.calls.clear();
  onFakes.startMonitoring();
  EXPECT_THAT(managers.calls, ElementsAre());
  onFakes.stopMonitoring();
  onFakes.stopMonitoring();
  EXPECT_THAT(managers.calls, ElementsAre("destroy"));
}

TEST_F(KeyboardSourceMonitorOnFakeManagersTest, IgnoresInputsOfEveryOtherUsagePage) {
  onFakes.startMonitoring();
  for (const std::uint32_t page : {0U, 1U, 6U, 8U, 9U, 12U, 0xFF00U, 0xFFFFFFFFU}) {
    managers.callback({&device, page, tick});
    EXPECT_EQ(onFakes.source(tick), nullptr) << "usage page " << page;
  }
  EXPECT_EQ(logLines(), std::vector<std::string>{});
  managers.callback({&device, keyboardPage, tick});
  EXPECT_NE(onFakes.source(tick), nullptr);
}

TEST_F(KeyboardSourceMonitorOnFakeManagersTest, IgnoresAKeyboardInputWithoutASender) {
  onFakes.startMonitoring();
  managers.callback({nullptr, keyboardPage, tick});
  EXPECT_EQ(onFakes.source(tick), nullptr);
  EXPECT_EQ(logLines(), std::vector<std::string>{});
}

}  // namespace
}  // namespace keyrow::sim
