#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdint>
#include <memory>
#include <thread>

#include "platform/HidManagers.h"
#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

/// Whether a thread gets to its work at once, or in a race with everything else.
class EventTapStressTest : public SimulatedMacTest, public ::testing::WithParamInterface<bool> {};

TEST_P(EventTapStressTest, SurvivesAFloodOfKeysWhileTheSystemInterferes) {
  constexpr std::uint64_t eventCount = 100'000;
  constexpr std::uint64_t interval = 300;
  mac.threadsRunAtOnce = GetParam();
  store("globalFnState", 0);
  store("applyFnModeToExternalFunctionKeys", true);
  mac.applications.install("com.apple.TextEdit");
  mac.applications.activate("com.apple.TextEdit");
  process->launch();
  auto& controller = keyrow().eventTapController();
  const auto keyboard = std::make_shared<const SimulatedKeyboard>(
      SimulatedKeyboard{.registryID = 1, .properties = {{"Transport", "USB"}}});

  std::atomic<std::uint64_t> posted{0};
  std::thread flood{[&] {
    for (std::uint64_t event = 0; event < eventCount; ++event, ++posted) {
      // Ordinary keys, top-row keys, and now and then a shortcut.
      const auto keyCode = static_cast<std::uint16_t>(event % 128);
      const auto flags = event % 97 == 0 ? keyEventFlag::secondaryFn : 0;
      const auto type = event % 2 == 0 ? keyEventType::keyDown : keyEventType::keyUp;
      mac.eventTaps.post(type, {.timestamp = event, .flags = flags, .keyCode = keyCode});
    }
  }};

  for (std::uint64_t round = 0; posted < eventCount; ++round) {
    const auto next = posted + interval;
    mac.sendInput(keyboard, hidPage::keyboardOrKeypad);
    // No timeout follows close upon another, and no rest lasts that long.
    mac.scheduler.advance(std::chrono::minutes{3});
    switch (round % 9) {
      case 0:
        mac.eventTaps.disableAll(keyEventType::tapDisabledByTimeout);
        break;
      case 1:
        mac.faults.fail(PortCall::enableEventTap, 1);
        mac.eventTaps.disableAll(keyEventType::tapDisabledByUserInput);
        break;
      case 2:
        controller.recoverEventTap(keyEventType::tapDisabledByTimeout);
        break;
      case 3:
        controller.stopEventTap();
        controller.startEventTap();
        break;
      case 4:
        mac.eventTaps.disableAll(0);
        controller.startEventTap();
        break;
      case 5:
        mac.changeAccessibility(false, std::chrono::seconds{0}, true);
        break;
      case 6:
        mac.changeAccessibility(true, std::chrono::seconds{0}, true);
        break;
      case 7:
        mac.faults.fail(PortCall::createEventTap, 2);
        mac.faults.fail(PortCall::enableEventTap, 1);
        mac.eventTaps.disableAll(keyEventType::tapDisabledByTimeout);
        break;
      default:
        keyrow().settings().set(BooleanSetting::enhancedDiagnosticsEnabled, round % 4 == 1);
        keyrow().settings().setFnReplacementModifier(FnReplacementModifier::rightOption);
        break;
    }
    mac.scheduler.runReady();
    while (posted < next && posted < eventCount) std::this_thread::yield();
  }
  flood.join();

  mac.faults.clear();
  mac.changeAccessibility(true, std::chrono::seconds{0}, true);
  mac.scheduler.runReady();
  EXPECT_EQ(mac.eventTaps.stalledCount(), 0U);
  controller.startEventTap();
  // The last worker may still be on its way.
  while (mac.eventTaps.enabledCount() == 0) std::this_thread::yield();
  EXPECT_EQ(mac.eventTaps.enabledCount(), 1);

  const KeyEvent ordinary{.timestamp = 0, .flags = 0, .keyCode = 0};
  EXPECT_EQ(mac.eventTaps.post(keyEventType::keyDown, ordinary), true);
  process->terminate();
  process.reset();
  EXPECT_TRUE(mac.openHandles.all().empty());
}

INSTANTIATE_TEST_SUITE_P(Threads, EventTapStressTest, ::testing::Bool());

// The worker ends in its own time, and nothing of the main queue runs after the goodbye.
TEST(EventTapEndTest, NoMediaKeyStaysDown) {
  for (int round = 0; round < 20; ++round) {
    SimulatedMac mac;
    mac.defaults.setValue(std::string{appIdentifier}, "applyFnModeToExternalFunctionKeys", true);
    mac.keyboards.attach("usb", {.registryID = 1, .properties = {{"Transport", "USB"}}});
    SimulatedProcess process{mac, 501};
    process.launch();
    mac.keyboardFilters.press("usb", {.keyCode = 111});
    mac.scheduler.runReady();
    ASSERT_EQ(mac.systemDefinedEvents.size(), 1U);
    mac.threadsRunAtOnce = false;
    process.terminate();
    ASSERT_EQ(mac.systemDefinedEvents.size(), 2U);
    EXPECT_EQ(mac.systemDefinedEvents.back().data1, 0x0B00);
  }
}

TEST(EventTapFloodTest, NoShortcutIsLostOrDoubledWhileTheTapWorks) {
  SimulatedMac mac;
  mac.applications.install("com.apple.TextEdit");
  mac.applications.activate("com.apple.TextEdit");
  SimulatedProcess process{mac, 501};
  process.launch();
  const auto before = mac.hid.writtenValues().size();
  constexpr int shortcuts = 1'000;
  const KeyEvent shortcut{.timestamp = 0, .flags = keyEventFlag::secondaryFn, .keyCode = 50};
  std::thread typist{[&] {
    for (int count = 0; count < shortcuts; ++count) {
      EXPECT_EQ(mac.eventTaps.post(keyEventType::keyDown, shortcut), false);
      EXPECT_EQ(mac.eventTaps.post(keyEventType::keyUp, shortcut), false);
      EXPECT_EQ(
          mac.eventTaps.post(keyEventType::keyDown, {.timestamp = 0, .flags = 0, .keyCode = 1}),
          true);
    }
  }};
  typist.join();
  mac.scheduler.runReady();
  EXPECT_EQ(mac.hid.writtenValues().size() - before, static_cast<std::size_t>(shortcuts));
}

}  // namespace
}  // namespace keyrow::sim
