#include "sim/machine/KeyboardFilters.h"

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

#include "platform/HidManagers.h"
#include "platform/VirtualKeys.h"
#include "sim/machine/PropertyText.h"
#include "sim/machine/SimulatedMac.h"

namespace keyrow::sim {

namespace {

using namespace std::chrono_literals;

/// Of the keyboard settings of a new Mac.
constexpr auto initialRepeatDelay = 500ms;
constexpr auto repeatInterval = 83ms;

/// What an Apple keyboard sends while Fn is held: the arrows and Delete (`kVK_…`).
constexpr std::array<std::pair<std::uint16_t, std::uint16_t>, 5> keysWithFn{{
    {123, 115},  // Left Arrow, Home
    {124, 119},  // Right Arrow, End
    {126, 116},  // Up Arrow, Page Up
    {125, 121},  // Down Arrow, Page Down
    {51, 117},   // Delete, Forward Delete
}};

/// What the top row of an Apple keyboard is in the special mode: F1 to F12, and either a key
/// code of its own or a media key.
struct SpecialKey {
  std::uint16_t keyCode;
  std::uint16_t specialKeyCode;
  std::string_view mediaKey;
};
constexpr std::array<SpecialKey, 12> specialKeys{{
    {virtualKey::f1, 0, "brightness down"},
    {virtualKey::f2, 0, "brightness up"},
    {virtualKey::f3, 160, ""},  // Mission Control
    {virtualKey::f4, 177, ""},  // Spotlight
    {virtualKey::f5, 176, ""},  // Dictation
    {virtualKey::f6, 178, ""},  // Do Not Disturb
    {virtualKey::f7, 0, "previous"},
    {virtualKey::f8, 0, "play"},
    {virtualKey::f9, 0, "next"},
    {virtualKey::f10, 0, "mute"},
    {virtualKey::f11, 0, "volume down"},
    {virtualKey::f12, 0, "volume up"},
}};

}  // namespace

bool KeyboardFilters::press(const std::string& keyboard, const NamedKey& key,
                            std::chrono::nanoseconds lateness) {
  if (isDown(keyboard, key.keyCode)) return false;
  sendInput(keyboard, lateness);
  // The key that went down last is the one that repeats.
  if (key.flags == 0) {
    for (auto& other : down_) {
      if (other.keyboard == keyboard) stopRepeating(other);
    }
  }
  down_.emplace_back(DownKey{keyboard, key, outgoing(keyboard, key.keyCode)});
  auto& pressed = down_.back();
  if (key.flags == 0 && pressed.outgoing.mediaKey != "play") {
    scheduleRepeat(pressed, initialRepeatDelay);
  }
  send(key.flags != 0 ? keyEventType::flagsChanged : keyEventType::keyDown, pressed.outgoing);
  return true;
}

bool KeyboardFilters::release(const std::string& keyboard, const NamedKey& key,
                              std::chrono::nanoseconds lateness) {
  const auto found = find(keyboard, key.keyCode);
  if (found == down_.end()) return false;
  sendInput(keyboard, lateness);
  if (key.keyCode == virtualKey::function && isApples(keyboard)) releaseChangedKeys(keyboard);
  auto released = *found;
  stopRepeating(released);
  down_.erase(found);
  if (released.isReleased) released.outgoing = outgoing(keyboard, key.keyCode);
  send(key.flags != 0 ? keyEventType::flagsChanged : keyEventType::keyUp, released.outgoing);
  return true;
}

void KeyboardFilters::releaseAll(const std::string& keyboard) {
  for (;;) {
    const auto last = std::ranges::find(down_ | std::views::reverse, keyboard, &DownKey::keyboard);
    if (last == down_.rend()) return;
    release(keyboard, NamedKey{last->key});
  }
}

void KeyboardFilters::releaseAll() {
  while (!down_.empty()) releaseAll(std::string{down_.back().keyboard});
}

bool KeyboardFilters::isDown(std::string_view keyboard, std::uint16_t keyCode) const {
  return std::ranges::any_of(down_, [&](const DownKey& one) {
    return one.keyboard == keyboard && one.key.keyCode == keyCode;
  });
}

std::vector<std::string> KeyboardFilters::heldKeys(std::string_view keyboard) const {
  std::vector<std::string> names;
  for (const auto& one : down_) {
    if (one.keyboard == keyboard) names.push_back(keyName(one.key.keyCode));
  }
  return names;
}

int KeyboardFilters::downCount(std::uint16_t keyCode) const {
  return static_cast<int>(std::ranges::count_if(down_, [keyCode](const DownKey& one) {
    return one.outgoing.mediaKey.empty() && one.outgoing.keyCode == keyCode;
  }));
}

std::vector<KeyboardFilters::DownKey>::iterator KeyboardFilters::find(std::string_view keyboard,
                                                                      std::uint16_t keyCode) {
  return std::ranges::find_if(down_, [&](const DownKey& one) {
    return one.keyboard == keyboard && one.key.keyCode == keyCode;
  });
}

KeyboardFilters::Outgoing KeyboardFilters::outgoing(std::string_view keyboard,
                                                    std::uint16_t keyCode) const {
  const Outgoing itself{.keyCode = keyCode, .mediaKey = {}};
  if (!isApples(keyboard)) return itself;
  const bool isFnDown = isDown(keyboard, virtualKey::function);
  if (const auto* special = std::ranges::find(specialKeys, keyCode, &SpecialKey::keyCode);
      special != specialKeys.end()) {
    const bool isSpecialMode = mac_.hid.modeName() != "standard";
    if (isSpecialMode == isFnDown) return itself;
    return {.keyCode = special->specialKeyCode, .mediaKey = special->mediaKey};
  }
  const auto* changed =
      std::ranges::find(keysWithFn, keyCode, [](const auto& one) { return one.first; });
  if (!isFnDown || changed == keysWithFn.end()) return itself;
  return {.keyCode = changed->second, .mediaKey = {}};
}

bool KeyboardFilters::isApples(std::string_view keyboard) const {
  const auto device = mac_.keyboards.find(keyboard);
  if (!device) return false;
  const auto has = [&](const char* key, const PropertyValue& value) {
    const auto found = device->properties.find(key);
    return found != device->properties.end() && found->second == value;
  };
  return has("Built-In", true) || has("VendorID", 0x05AC) || has("VendorID", 0x004C);
}

void KeyboardFilters::stopRepeating(DownKey& key) {
  if (key.repeat) mac_.scheduler.cancel(*key.repeat);
  key.repeat.reset();
}

void KeyboardFilters::scheduleRepeat(DownKey& key, std::chrono::nanoseconds delay) {
  key.repeat = mac_.scheduler.schedule(
      delay, [this, keyboard = key.keyboard, code = key.key.keyCode] { repeat(keyboard, code); });
}

void KeyboardFilters::repeat(const std::string& keyboard, std::uint16_t keyCode) {
  const auto found = find(keyboard, keyCode);
  if (found == down_.end() || mac_.power.isAsleep()) return;
  scheduleRepeat(*found, repeatInterval);
  send(keyEventType::keyDown, found->outgoing, /*isRepeat=*/true);
}

/// The releases of what Fn made of the keys that are down come before that of Fn.
void KeyboardFilters::releaseChangedKeys(std::string_view keyboard) {
  for (auto& one : down_) {
    const bool isTopRow =
        std::ranges::find(specialKeys, one.key.keyCode, &SpecialKey::keyCode) != specialKeys.end();
    const bool isChanged = one.outgoing.keyCode != one.key.keyCode;
    if (one.keyboard != keyboard || one.isReleased || !one.outgoing.mediaKey.empty() ||
        isTopRow == isChanged) {
      continue;
    }
    stopRepeating(one);
    one.isReleased = true;
    send(keyEventType::keyUp, one.outgoing);
  }
}

void KeyboardFilters::sendInput(const std::string& keyboard, std::chrono::nanoseconds lateness) {
  if (const auto device = mac_.keyboards.find(keyboard)) {
    mac_.sendInput(device, hidPage::keyboardOrKeypad, lateness);
  }
}

void KeyboardFilters::send(std::uint32_t type, const Outgoing& outgoing, bool isRepeat) {
  if (!outgoing.mediaKey.empty()) {
    const auto* step = type == keyEventType::keyUp ? " up" : isRepeat ? " repeat" : " down";
    mac_.timeline.add(TimelineEvent::Kind::key, {quoted(std::string{outgoing.mediaKey} + step)});
    return;
  }
  std::uint64_t flags = mac_.isCapsLockOn ? keyEventFlag::alphaShift : 0;
  for (const auto& one : down_) flags |= one.key.flags;
  if (carriesFn(outgoing.keyCode)) flags |= keyEventFlag::secondaryFn;
  mac_.postKeyEvent(type, {.timestamp = mac_.machAbsoluteTime(),
                           .flags = flags,
                           .keyCode = outgoing.keyCode,
                           .isRepeat = isRepeat});
}

}  // namespace keyrow::sim
