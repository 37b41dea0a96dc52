#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/HidManagers.h"
#include "tests/app/AppDelegateFixture.h"

namespace keyrow::sim {

/// A launched Keyrow whose key event handler is called directly, and an external keyboard
/// that has just sent an input. TextEdit is in front, the mode is special.
class KeyEventFixture : public AppDelegateFixture {
 protected:
  static constexpr std::uint16_t keyA = 0;
  static constexpr std::uint16_t keyGrave = 50;
  static constexpr std::uint16_t keyEscape = 53;
  static constexpr std::uint16_t keyFn = 63;

  void SetUp() override {
    AppDelegateFixture::SetUp();
    launchWithFrontmost(textEdit);
    mac.scheduler.runReady();
    useKeyboard({{"Transport", "USB"}, {"Built-In", false}});
    takeWrittenModes();
    handler = keyrow().makeKeyEventHandler();
  }

  /// Events come from a keyboard with these properties from now on.
  void useKeyboard(PropertyDictionary properties) {
    mac.scheduler.advance(std::chrono::seconds{10});
    mac.sendInput(std::make_shared<const SimulatedKeyboard>(SimulatedKeyboard{
                      .registryID = ++lastRegistryID_, .properties = std::move(properties)}),
                  hidPage::keyboardOrKeypad);
  }

  /// Whether the event passes.
  bool passes(std::uint32_t type, std::uint16_t keyCode, std::uint64_t flags = 0) {
    return handles(type, {.timestamp = mac.machAbsoluteTime(), .flags = flags, .keyCode = keyCode});
  }

  /// The same for the event of a key that repeats.
  bool passesRepeat(std::uint16_t keyCode, std::uint64_t flags = 0) {
    return handles(keyEventType::keyDown, {.timestamp = mac.machAbsoluteTime(),
                                           .flags = flags,
                                           .keyCode = keyCode,
                                           .isRepeat = true});
  }

  /// The same as `passes`, and does what the event put on the main queue.
  bool passesAndRuns(std::uint32_t type, std::uint16_t keyCode, std::uint64_t flags = 0) {
    const bool result = passes(type, keyCode, flags);
    mac.scheduler.runReady();
    return result;
  }

  std::shared_ptr<KeyEventHandler> handler;

 private:
  bool handles(std::uint32_t type, const KeyEvent& event) {
    return handler->handleTappedEvent(type, event) == TapVerdict::pass;
  }

  std::uint64_t lastRegistryID_ = 0;
};

}  // namespace keyrow::sim
