#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "fuzz/ArbitraryValues.h"
#include "fuzz/ExpectedSources.h"
#include "fuzz/Require.h"
#include "platform/HidManagers.h"
#include "platform/HidSystem.h"
#include "platform/Platform.h"
#include "sim/machine/KeyText.h"
#include "sim/machine/SimulatedMac.h"
#include "sim/ports/SimulatedProcess.h"

namespace keyrow::sim {
namespace {

using fuzz::require;
using namespace keyEventType;

/// What each modifier sets on its own side, in the order of `FnReplacementModifier`.
constexpr std::array<std::uint64_t, 8> sideFlags{0x1, 0x2000, 0x20, 0x40, 0x8, 0x10, 0x2, 0x4};

/// The keys of the top row that do something else in the special mode: media keys, and F3 and
/// F4.
constexpr std::array<std::uint16_t, 8> mediaKeys{122, 120, 98, 100, 101, 109, 103, 111};
constexpr std::array<std::uint16_t, 2> otherTranslatedKeys{99, 118};

/// Of these, the media keys that act again with each repeat.
constexpr std::array<std::uint16_t, 4> repeatingKeys{122, 120, 103, 111};

constexpr std::uint16_t fnKey = 63;

bool contains(const auto& range, const auto& value) {
  return std::ranges::find(range, value) != range.end();
}

MachTimebase arbitraryTimebase(FuzzedDataProvider& data) {
  constexpr std::array<MachTimebase, 3> usual{
      {{.numer = 125, .denom = 3}, {.numer = 1, .denom = 1}, {.numer = 0, .denom = 0}}};
  if (data.ConsumeIntegralInRange(0, 3) > 0) return data.PickValueInArray(usual);
  const auto numer = data.ConsumeIntegral<std::uint32_t>();
  return {.numer = numer, .denom = data.ConsumeIntegral<std::uint32_t>()};
}

/// A Keyrow that gets arbitrary inputs and key events, and has to say which of them pass.
class KeyEvents {
 public:
  explicit KeyEvents(FuzzedDataProvider& data)
      : data_{data}, timebase{arbitraryTimebase(data)}, expected{timebase} {
    mac.machTimebase = timebase;
    // Some events come long after the first, and are in the past even so.
    mac.scheduler.advance(std::chrono::hours{1});
    process = std::make_unique<SimulatedProcess>(mac, 501);
    handler = keyrow().makeKeyEventHandler();
    monitor().startMonitoring();
    constexpr std::uint32_t keyboardCount = 4;
    for (std::uint32_t number = 0; number < keyboardCount; ++number) addKeyboard(number);
    // Of some inputs the system names no sender.
    keyboards.push_back(nullptr);
  }

  void run() {
    constexpr int enough = 400;
    for (int step = 0; step < enough && data_.remaining_bytes() > 0; ++step) doSomething();
    runMainQueue();
    monitor().stopMonitoring();
    process.reset();
    require(mac.openHandles.all().empty(), "nothing is left open");
  }

 private:
  void doSomething() {
    switch (data_.ConsumeIntegralInRange(0, 19)) {
      case 0:
        return restartMonitoring();
      case 1:
        return keyrow().settings().set(BooleanSetting::enhancedDiagnosticsEnabled,
                                       data_.ConsumeBool());
      case 2:
        mac.hid.setParameter(hidFKeyModeKey, data_.ConsumeBool()
                                                 ? PropertyValue{data_.ConsumeIntegralInRange(0, 1)}
                                                 : fuzz::arbitraryOptionalValue(data_));
        return;
      case 3:
        mac.applications.activate(data_.ConsumeBool() ? std::optional{fuzz::arbitraryString(data_)}
                                                      : std::nullopt);
        return;
      case 4:
        return data_.ConsumeBool() ? runMainQueue() : forgetKeys();
      case 5:
      case 6:
      case 7:
        return changeSetting();
      case 8:
      case 9:
      case 10:
      case 11:
        return sendInputs();
      default:
        return sendKeyEvent();
    }
  }

  void addKeyboard(std::uint32_t number) {
    SimulatedKeyboard keyboard;
    if (data_.ConsumeIntegralInRange(0, 3) > 0) keyboard.registryID = number;
    keyboard.usage = data_.ConsumeIntegralInRange(0, 7) > 0 ? data_.ConsumeIntegralInRange(6, 7)
                                                            : data_.ConsumeIntegral<std::int64_t>();
    for (const auto* key :
         {"Built-In", "VendorID", "Transport", "Manufacturer", "Product", "ProductID"}) {
      if (data_.ConsumeBool()) keyboard.properties.emplace(key, fuzz::arbitraryValue(data_));
    }
    if (data_.ConsumeBool()) {
      keyboard.properties.insert_or_assign("VendorID", data_.ConsumeIntegralInRange(0, 1));
      keyboard.properties.insert_or_assign("ProductID", data_.ConsumeIntegralInRange(0, 1));
    }
    // By this they are told apart below.
    keyboard.properties.emplace("LocationID", std::int64_t{number});
    keyboards.push_back(std::make_shared<const SimulatedKeyboard>(std::move(keyboard)));
  }

  void restartMonitoring() {
    monitor().stopMonitoring();
    expected.clear();
    isListening = data_.ConsumeIntegralInRange(0, 3) > 0;
    if (!isListening) mac.faults.fail(PortCall::openHidManager, 1);
    monitor().startMonitoring();
  }

  void changeSetting() {
    const bool isSensible = data_.ConsumeIntegralInRange(0, 3) > 0;
    switch (data_.ConsumeIntegralInRange(0, 3)) {
      case 0:
        return store(rowOf(BooleanSetting::applyFnModeToExternalFunctionKeys).key,
                     isSensible ? PropertyValue{true} : fuzz::arbitraryOptionalValue(data_));
      case 1:
        return store(settingsKey::fnReplacementModifier,
                     isSensible
                         ? PropertyValue{data_.PickValueInArray(fnReplacementModifierTable).second}
                         : fuzz::arbitraryOptionalValue(data_));
      case 2:
        return store(settingsKey::keyboardFnStates, isSensible
                                                        ? PropertyValue{arbitraryKeyboardModes()}
                                                        : fuzz::arbitraryOptionalValue(data_));
      default:
        return store(settingsKey::localToggleShortcutKeyCode,
                     isSensible ? PropertyValue{int{arbitraryKeyCode()}}
                                : fuzz::arbitraryOptionalValue(data_));
    }
  }

  void store(std::string_view key, std::optional<PropertyValue> value) {
    mac.defaults.setValue(appIdentifier, key, std::move(value));
  }

  PropertyDictionary arbitraryKeyboardModes() {
    PropertyDictionary modes;
    for (const auto* numbers : {"0000:0000", "0000:0001", "0001:0000", "0001:0001"}) {
      if (data_.ConsumeBool()) modes.emplace(numbers, data_.ConsumeIntegralInRange(0, 2));
    }
    return modes;
  }

  void runMainQueue() {
    mac.scheduler.advance(std::chrono::milliseconds{data_.ConsumeIntegralInRange(0, 400)});
    require(mac.systemDefinedEvents.size() == mediaEvents,
            "a media key is posted for each step of a swallowed one, and no other");
    require(mac.hid.writtenValues().size() <= commands, "only a shortcut changes the mode");
  }

  /// One input, or now and then more than the monitor remembers, from one keyboard after the
  /// other and so close together that an event may lie just between two of them.
  void sendInputs() {
    const auto page = data_.ConsumeIntegralInRange(0, 7) > 0
                          ? std::uint32_t{hidPage::keyboardOrKeypad}
                          : data_.ConsumeIntegral<std::uint32_t>();
    auto timestamp = arbitraryTimestamp();
    auto number = data_.ConsumeIntegralInRange(std::size_t{0}, keyboards.size() - 1);
    auto count = data_.ConsumeIntegralInRange(0, 7) > 0 ? 1 : data_.ConsumeIntegralInRange(1, 80);
    for (; count > 0; --count, timestamp += 2, number = (number + 1) % keyboards.size()) {
      const auto& keyboard = keyboards[number];
      mac.keyboards.deliver({keyboard, page, timestamp});
      const bool isKeyboard = keyboard && (keyboard->usage == hidUsage::keyboard ||
                                           keyboard->usage == hidUsage::keypad);
      if (isListening && page == hidPage::keyboardOrKeypad && isKeyboard) {
        expected.input(timestamp, static_cast<std::uint32_t>(number));
      }
    }
  }

  void sendKeyEvent() {
    const auto type = arbitraryType();
    KeyEvent event;
    event.timestamp = arbitraryTimestamp();
    event.flags = arbitraryFlags();
    event.keyCode = arbitraryKeyCode();
    event.isRepeat = data_.ConsumeIntegralInRange(0, 3) == 0;
    followFn(type, event);
    const auto verdict = handler->handleTappedEvent(type, event);
    checkVerdict(type, event, verdict == TapVerdict::pass);
  }

  void forgetKeys() {
    handler->forgetKeys();
    for (const auto& [keyCode, press] : presses) mediaEvents += press.isMediaKeyDown ? 1U : 0U;
    presses.clear();
    isFnDown = false;
  }

  void followFn(std::uint32_t type, const KeyEvent& event) {
    const bool hasFlag = (event.flags & keyEventFlag::secondaryFn) != 0;
    if (carriesFn(event.keyCode) || event.keyCode == 131) return;
    if (type == flagsChanged && event.keyCode == fnKey) isFnDown = hasFlag;
    if (!hasFlag) isFnDown = false;
  }

  void checkVerdict(std::uint32_t type, const KeyEvent& event, bool passes) {
    const auto source = monitor().source(event.timestamp);
    const auto keyboard =
        expected.at(fuzz::ticksOf(event.timestamp, mac.machAbsoluteTime(), timebase));
    require(source ? source->locationID == keyboard : !keyboard,
            "an event belongs to the keyboard whose input is the nearest");
    if (type != keyDown && type != keyUp) {
      require(passes, "only keys that go down or up are ever swallowed");
      return;
    }
    if (type == keyDown && !event.isRepeat) {
      checkPress(event, source.get(), passes);
    } else if (const auto press = presses.find(event.keyCode); press != presses.end()) {
      checkFollowing(type, event, press->second, passes);
    } else {
      require(passes, "what follows passes where no press was seen");
    }
  }

  enum class Kind { ordinary, shortcut, translated };
  struct KeyPress {
    Kind kind;
    bool isMediaKeyDown;
    /// A release has come since.
    bool isOver = false;
  };

  void checkPress(const KeyEvent& event, const KeyboardDeviceSource* source, bool passes) {
    const auto kind = kindOf(event, source);
    require(passes == (kind == Kind::ordinary), "only shortcuts and translated keys are swallowed");
    if (kind == Kind::shortcut) ++commands;
    if (const auto press = presses.find(event.keyCode);
        press != presses.end() && press->second.isMediaKeyDown) {
      ++mediaEvents;
    }
    const bool isMedia = kind == Kind::translated && contains(mediaKeys, event.keyCode);
    if (isMedia) ++mediaEvents;
    presses.insert_or_assign(event.keyCode, KeyPress{kind, isMedia});
  }

  void checkFollowing(std::uint32_t type, const KeyEvent& event, KeyPress& press, bool passes) {
    const bool isLaterRelease = type == keyUp && press.isOver;
    require(passes == (press.kind == Kind::ordinary || isLaterRelease),
            "what follows a press goes its way, and all releases but the first pass");
    if (type == keyUp) {
      if (press.isMediaKeyDown) ++mediaEvents;
      press.isMediaKeyDown = false;
      press.isOver = true;
    } else if (press.kind == Kind::shortcut) {
      if (isFnLikeHeld(event) && !press.isOver) ++commands;
    } else if (press.isMediaKeyDown && contains(repeatingKeys, event.keyCode)) {
      ++mediaEvents;
    }
  }

  Kind kindOf(const KeyEvent& event, const KeyboardDeviceSource* source) {
    const auto& settings = keyrow().settings();
    const bool isShortcutKey =
        event.keyCode == escapeKeyCode || event.keyCode == settings.localToggleShortcutKeyCode();
    if (isShortcutKey && isFnLikeHeld(event)) return Kind::shortcut;
    const bool isTranslated =
        (contains(mediaKeys, event.keyCode) || contains(otherTranslatedKeys, event.keyCode)) &&
        settings.isOn(BooleanSetting::applyFnModeToExternalFunctionKeys) && source &&
        source->isMediaTranslationEligible(process->platform().text) &&
        ownMode(*source).value_or(std::string{mac.hid.modeName()}) == "special";
    return isTranslated ? Kind::translated : Kind::ordinary;
  }

  /// The mode that is stored for a keyboard; absent for none.
  std::optional<std::string> ownMode(const KeyboardDeviceSource& source) {
    if (!source.vendorID || !source.productID) return std::nullopt;
    std::array<char, 20> text{};
    std::snprintf(text.data(), text.size(), "%04x:%04x", *source.vendorID, *source.productID);
    const auto modes = mac.defaults.value(appIdentifier, settingsKey::keyboardFnStates);
    if (!modes || !modes->dictionary()) return std::nullopt;
    const auto found = modes->dictionary()->find(std::string_view{text.data()});
    const auto mode =
        found == modes->dictionary()->end() ? std::nullopt : storedFnState(found->second);
    if (!mode) return std::nullopt;
    return *mode == FnState::special ? "special" : "standard";
  }

  bool isFnLikeHeld(const KeyEvent& event) {
    const bool isBroughtAlong = carriesFn(event.keyCode) || event.keyCode == 131;
    if (isBroughtAlong ? isFnDown : (event.flags & keyEventFlag::secondaryFn) != 0) return true;
    const auto modifier = keyrow().settings().fnReplacementModifier();
    return modifier && (event.flags & sideFlags[static_cast<std::size_t>(*modifier)]) != 0;
  }

  std::uint32_t arbitraryType() {
    constexpr std::array<std::uint32_t, 6> types{keyDown, keyDown, keyUp, keyUp, flagsChanged, 14};
    return data_.ConsumeIntegralInRange(0, 7) > 0 ? data_.PickValueInArray(types)
                                                  : data_.ConsumeIntegral<std::uint32_t>();
  }

  std::uint64_t arbitraryFlags() {
    switch (data_.ConsumeIntegralInRange(0, 3)) {
      case 0:
        return 0;
      case 1:
        return keyEventFlag::secondaryFn;
      case 2:
        return data_.PickValueInArray(sideFlags);
      default:
        return data_.ConsumeIntegral<std::uint64_t>();
    }
  }

  std::uint16_t arbitraryKeyCode() {
    switch (data_.ConsumeIntegralInRange(0, 5)) {
      case 5:
        return fnKey;
      case 0:
        return escapeKeyCode;
      case 1:
        return keyrow().settings().localToggleShortcutKeyCode();
      case 2:
        return data_.PickValueInArray(mediaKeys);
      case 3:
        return data_.PickValueInArray(otherTranslatedKeys);
      default:
        return data_.ConsumeIntegral<std::uint16_t>();
    }
  }

  /// In mach ticks: mostly a little later than before, or else at the edge of what is near
  /// enough to that, or any at all.
  std::uint64_t arbitraryTimestamp() {
    switch (data_.ConsumeIntegralInRange(0, 7)) {
      case 0:
        return data_.ConsumeIntegral<std::uint64_t>();
      case 1:
      case 2:
      case 3: {
        constexpr std::uint64_t near = 2;
        const std::array<std::uint64_t, 4> edges{near, expected.matchWindow, expected.singleWindow,
                                                 4 * expected.matchWindow};
        const auto distance = data_.PickValueInArray(edges) +
                              data_.ConsumeIntegralInRange<std::uint64_t>(0, 2 * near) - near;
        return data_.ConsumeBool() ? now + distance : now - distance;
      }
      default:
        return now += data_.ConsumeIntegralInRange<std::uint64_t>(0, 2 * expected.matchWindow);
    }
  }

  Keyrow& keyrow() { return process->keyrow(); }
  KeyboardSourceMonitor& monitor() { return keyrow().keyboardSourceMonitor(); }

  FuzzedDataProvider& data_;
  const MachTimebase timebase;
  fuzz::ExpectedSources expected;
  SimulatedMac mac;
  std::unique_ptr<SimulatedProcess> process;
  std::shared_ptr<KeyEventHandler> handler;
  /// The last press of each key since all was forgotten.
  std::map<std::uint16_t, KeyPress> presses;
  bool isFnDown = false;
  std::vector<std::shared_ptr<const SimulatedKeyboard>> keyboards;
  bool isListening = true;
  std::uint64_t now = 1'000'000'000;
  /// How many commands have been given, and media keys translated.
  std::size_t commands = 0;
  std::size_t mediaEvents = 0;
};

}  // namespace
}  // namespace keyrow::sim

/// Whatever comes from keyboards and settings, just the events that mean something to Keyrow
/// are swallowed.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data{bytes, size};
  keyrow::sim::KeyEvents{data}.run();
  return 0;
}
