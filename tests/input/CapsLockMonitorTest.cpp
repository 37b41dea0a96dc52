#include "input/CapsLockMonitor.h"

#include <gmock/gmock.h>

#include <chrono>
#include <optional>

#include "tests/SimulatedMacTest.h"
#include "tests/input/FakeHidManagers.h"

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

class CapsLockMonitorTest : public SimulatedMacTest {
 protected:
  void SetUp() override { process->launch(); }

  CapsLockMonitor& monitor() { return keyrow().capsLockMonitor(); }

  void attach(const std::string& name, std::optional<PropertyValue> state,
              std::optional<std::uint64_t> registryID) {
    SimulatedKeyboard keyboard{.registryID = registryID, .properties = {}};
    if (state) keyboard.properties.emplace("HIDCapsLockState", *state);
    mac.keyboards.attach(name, keyboard);
  }

  void show(bool isShown) {
    keyrow().settings().set(BooleanSetting::showCapsLockIndicator, isShown);
  }

  std::size_t devicesCopied() {
    std::size_t count = 0;
    for (const auto& call : mac.trace.take()) {
      if (call == "copy-devices") ++count;
    }
    return count;
  }
};

TEST_F(CapsLockMonitorTest, KnowsNothingWithoutAKeyboardThatReports) {
  show(true);
  EXPECT_EQ(monitor().cachedCapsLockState(), std::nullopt);
  attach("mute", std::nullopt, 1);
  attach("nameless", true, std::nullopt);
  attach("odd", "yes", 2);
  EXPECT_EQ(monitor().cachedCapsLockState(), std::nullopt);
}

TEST_F(CapsLockMonitorTest, IsOnWhenAnyKeyboardSaysSo) {
  show(true);
  attach("a", false, 1);
  EXPECT_EQ(monitor().cachedCapsLockState(), false);
  attach("b", 1, 2);
  EXPECT_EQ(monitor().cachedCapsLockState(), true);
  mac.keyboards.unplug("b");
  EXPECT_EQ(monitor().cachedCapsLockState(), false);
}

TEST_F(CapsLockMonitorTest, SwitchedOffItHoldsNothingAndSwitchedOnItStartsAnew) {
  attach("a", true, 1);
  const auto observers = mac.openHandles.count("observer");
  const auto managers = mac.openHandles.count("HidManager");
  for (int round = 0; round < 2; ++round) {
    show(true);
    EXPECT_EQ(mac.openHandles.count("observer"), observers + 2);
    EXPECT_EQ(mac.openHandles.count("HidManager"), managers + 1);
    EXPECT_EQ(monitor().cachedCapsLockState(), true);
    show(false);
    EXPECT_EQ(mac.openHandles.count("observer"), observers);
    EXPECT_EQ(mac.openHandles.count("HidManager"), managers);
    EXPECT_EQ(monitor().cachedCapsLockState(), std::nullopt);
  }
}

TEST_F(CapsLockMonitorTest, ApplyingTheSettingTwiceInstallsEverythingOnce) {
  show(true);
  const auto handles = mac.openHandles.all();
  monitor().applyCapsLockIndicatorSetting();
  monitor().observeCapsLockIndicatorSetting();
  EXPECT_EQ(mac.openHandles.all(), handles);
}

TEST_F(CapsLockMonitorTest, ABurstOfChangesIsLookedAtOnceAfterTheLast) {
  attach("a", false, 1);
  show(true);
  mac.trace.start();
  for (int press = 0; press < 5; ++press) {
    mac.setCapsLock(press % 2 == 0, "a");
    if (press < 4) mac.scheduler.advance(25ms);
  }
  mac.scheduler.advance(120ms - 1ns);
  EXPECT_EQ(devicesCopied(), 0U);
  mac.scheduler.advance(1ns);
  EXPECT_EQ(devicesCopied(), 1U);
  EXPECT_EQ(monitor().cachedCapsLockState(), true);
  mac.scheduler.advance(1h);
  EXPECT_EQ(devicesCopied(), 0U);
}

TEST_F(CapsLockMonitorTest, WithTheSettingOffAKeyboardCausesNoRefresh) {
  show(true);
  // Nobody was told, so the keyboards are watched still.
  store("showCapsLockIndicator", false);
  mac.trace.start();
  attach("a", true, 1);
  monitor().refreshCapsLockIfEnabled();
  EXPECT_EQ(devicesCopied(), 0U);
  EXPECT_EQ(monitor().cachedCapsLockState(), std::nullopt);
}

TEST_F(CapsLockMonitorTest, SeesTheKeyInItsOwnWindow) {
  show(true);
  attach("a", false, 1);
  keyrow().settingsWindowController().show();
  mac.scheduler.runReady();
  ASSERT_EQ(mac.applications.frontmost(), appIdentifier);
  mac.scheduler.advance(1s);
  mac.trace.start();
  mac.setCapsLock(true, "a");
  mac.scheduler.advance(120ms);
  EXPECT_EQ(devicesCopied(), 1U);
  EXPECT_EQ(monitor().cachedCapsLockState(), true);
}

TEST_F(CapsLockMonitorTest, AManagerThatCannotBeOpenedIsLoggedAndTheSystemIsAsked) {
  mac.faults.fail(PortCall::openHidManager, 1);
  attach("a", false, 1);
  show(true);
  EXPECT_EQ(logLines().back(),
            "hardware error: Failed to start Caps Lock device monitoring: -536870174");
  EXPECT_EQ(monitor().cachedCapsLockState(), std::nullopt);
  mac.setCapsLock(true, "a");
  mac.scheduler.advance(120ms);
  EXPECT_EQ(process->statusItem().dot(), "caps-lock");
  // The next application of the setting tries again.
  monitor().applyCapsLockIndicatorSetting();
  EXPECT_EQ(monitor().cachedCapsLockState(), true);
}

TEST_F(CapsLockMonitorTest, AManagerWithoutDevicesEmptiesTheCache) {
  attach("a", true, 1);
  show(true);
  mac.faults.fail(PortCall::copyDevices, 1);
  monitor().refreshCapsLockIfEnabled();
  EXPECT_EQ(monitor().cachedCapsLockState(), std::nullopt);
}

TEST_F(CapsLockMonitorTest, AKeypadCountsToo) {
  show(true);
  mac.keyboards.attach("keypad",
                       {.registryID = 1, .properties = {{"HIDCapsLockState", true}}, .usage = 7});
  EXPECT_EQ(monitor().cachedCapsLockState(), true);
  mac.keyboards.attach("mouse",
                       {.registryID = 2, .properties = {{"HIDCapsLockState", true}}, .usage = 2});
  mac.keyboards.unplug("keypad");
  EXPECT_EQ(monitor().cachedCapsLockState(), std::nullopt);
}

TEST_F(CapsLockMonitorTest, IsReadyToListenBeforeItOpensItsManager) {
  FakeHidManagers managers;
  const auto& platform = process->platform();
  CapsLockMonitor onFakes{{.hidManagers = managers,
                           .inputMonitoring = platform.inputMonitoring,
                           .hidSystem = platform.hidSystem,
                           .eventMonitors = platform.eventMonitors,
                           .mainQueue = platform.mainQueue,
                           .settings = keyrow().settings(),
                           .presenter = keyrow().statusBarController(),
                           .hardwareLog = keyrow().diagnosticsLog().logger(LogCategory::hardware)}};
  show(true);
  onFakes.applyCapsLockIndicatorSetting();
  onFakes.applyCapsLockIndicatorSetting();
  EXPECT_THAT(managers.calls, ElementsAre("create", "device matching", "register for devices",
                                          "register for removals", "schedule", "open"));
}

TEST_F(CapsLockMonitorTest, TellsWhatTheSystemSaysOrNothing) {
  for (const bool isOn : {true, false}) {
    mac.isCapsLockOn = isOn;
    EXPECT_EQ(monitor().systemCapsLockState(), isOn);
  }
  for (const auto call :
       {PortCall::findService, PortCall::openConnection, PortCall::readModifierLockState}) {
    mac.faults.fail(call, 1);
    EXPECT_EQ(monitor().systemCapsLockState(), std::nullopt) << info(call).name;
  }
  EXPECT_EQ(mac.openHandles.count("HidService") + mac.openHandles.count("HidConnection"), 0);
}

TEST_F(CapsLockMonitorTest, SwitchedOffDuringABurstItStaysOff) {
  attach("a", false, 1);
  show(true);
  mac.setCapsLock(true, "a");
  mac.scheduler.advance(50ms);
  show(false);
  mac.scheduler.advance(1h);
  EXPECT_EQ(monitor().cachedCapsLockState(), std::nullopt);
  EXPECT_EQ(process->statusItem().dot(), "none");
}

TEST_F(CapsLockMonitorTest, TearingDownDropsAPendingRefreshAndTheObserver) {
  attach("a", false, 1);
  show(true);
  mac.setCapsLock(true, "a");
  monitor().tearDownCapsLockMonitoring();
  mac.trace.start();
  mac.scheduler.advance(1s);
  show(true);
  EXPECT_EQ(devicesCopied(), 0U);
  EXPECT_EQ(mac.openHandles.count("HidManager"), 1);
}

TEST_F(CapsLockMonitorTest, TearingDownLooksAtNothingAnyMore) {
  mac.scheduler.advance(1h);
  show(true);
  mac.setCapsLock(true, "");
  monitor().tearDownCapsLockMonitoring();
  mac.trace.start();
  mac.scheduler.advance(1s);
  // Not at the system's state either.
  EXPECT_THAT(mac.trace.take(), ElementsAre());
  EXPECT_EQ(process->statusItem().dot(), "none");
}

TEST_F(CapsLockMonitorTest, IsShownAsSoonAsTheKeyboardsHaveTold) {
  attach("a", true, 1);
  show(true);
  // The system knows nothing of it.
  ASSERT_EQ(monitor().systemCapsLockState(), false);
  EXPECT_EQ(process->statusItem().dot(), "caps-lock");
}

TEST_F(CapsLockMonitorTest, IsLookedAtAtEveryApplicationSwitchAndAtWake) {
  attach("a", false, 1);
  show(true);
  mac.keyboards.setProperty("a", "HIDCapsLockState", true);
  mac.applications.activate("com.apple.TextEdit");
  EXPECT_EQ(monitor().cachedCapsLockState(), true);
  EXPECT_EQ(process->statusItem().dot(), "caps-lock");
  mac.power.sleep();
  mac.keyboards.setProperty("a", "HIDCapsLockState", false);
  mac.power.wake();
  EXPECT_EQ(monitor().cachedCapsLockState(), false);
  EXPECT_EQ(process->statusItem().dot(), "none");
}

}  // namespace
}  // namespace keyrow::sim
