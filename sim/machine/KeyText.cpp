#include "sim/machine/KeyText.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "core/FnReplacementModifier.h"
#include "core/KeyNames.h"
#include "core/LocalToggleShortcut.h"
#include "platform/VirtualKeys.h"

namespace keyrow::sim {

namespace {

struct ModifierName {
  std::string_view name;
  NamedKey key;
};

constexpr NamedKey modifier(std::uint16_t code, std::uint64_t flag, FnReplacementModifier side) {
  return {.keyCode = code, .flags = flag | deviceFlag(side)};
}

constexpr auto leftControl =
    modifier(virtualKey::control, keyEventFlag::control, FnReplacementModifier::leftControl);
constexpr auto leftOption =
    modifier(virtualKey::option, keyEventFlag::option, FnReplacementModifier::leftOption);
constexpr auto leftCommand =
    modifier(virtualKey::command, keyEventFlag::command, FnReplacementModifier::leftCommand);
constexpr auto leftShift =
    modifier(virtualKey::shift, keyEventFlag::shift, FnReplacementModifier::leftShift);

/// A name without a side means the left one.
constexpr std::array<ModifierName, 14> modifierNames{{
    {"fn", {virtualKey::function, keyEventFlag::secondaryFn}},
    {"caps-lock", {virtualKey::capsLock, keyEventFlag::alphaShift}},
    {"left-control", leftControl},
    {"right-control", modifier(virtualKey::rightControl, keyEventFlag::control,
                               FnReplacementModifier::rightControl)},
    {"left-option", leftOption},
    {"right-option",
     modifier(virtualKey::rightOption, keyEventFlag::option, FnReplacementModifier::rightOption)},
    {"left-command", leftCommand},
    {"right-command", modifier(virtualKey::rightCommand, keyEventFlag::command,
                               FnReplacementModifier::rightCommand)},
    {"left-shift", leftShift},
    {"right-shift",
     modifier(virtualKey::rightShift, keyEventFlag::shift, FnReplacementModifier::rightShift)},
    {"control", leftControl},
    {"option", leftOption},
    {"command", leftCommand},
    {"shift", leftShift},
}};

constexpr std::array<std::pair<std::uint64_t, std::string_view>, 5> flagNames{{
    {keyEventFlag::secondaryFn, "fn"},
    {keyEventFlag::control, "control"},
    {keyEventFlag::option, "option"},
    {keyEventFlag::shift, "shift"},
    {keyEventFlag::command, "command"},
}};

/// Of all others an event tells by its flag whether Fn is held (`kVK_…`).
constexpr auto keysThatCarryFn = std::to_array<std::uint16_t>({
    122, 120, 99,  118, 96,  97,  98, 100, 101, 109,  // F1 to F10
    103, 111, 105, 107, 113, 106, 64, 79,  80,  90,   // F11 to F20
    123, 124, 125, 126,                               // the arrows
    115, 119, 116, 121, 117, 114,                     // Home to Help
    160, 176, 177, 178,                               // an Apple top row in the special mode
});

/// A name of several words is written with hyphens between them.
bool isCalled(std::string_view name, std::string_view key) {
  return std::ranges::equal(name, key, [](unsigned char left, unsigned char right) {
    return std::tolower(left) == std::tolower(right) || (left == '-' && right == ' ');
  });
}

}  // namespace

std::optional<NamedKey> keyNamed(std::string_view name) {
  if (isCalled(name, "Escape")) return NamedKey{.keyCode = escapeKeyCode};
  if (name == sectionKeyName) return NamedKey{.keyCode = sectionKeyCode};
  for (const auto& modifier : modifierNames) {
    if (isCalled(name, modifier.name)) return modifier.key;
  }
  for (const auto& key : keyNames()) {
    if (isCalled(name, key.displayName)) return NamedKey{.keyCode = key.keyCode};
  }
  return std::nullopt;
}

namespace {

/// The modifier with this key code; null when there is none.
const ModifierName* findModifier(std::uint16_t keyCode) {
  const auto found = std::ranges::find(modifierNames, keyCode,
                                       [](const ModifierName& one) { return one.key.keyCode; });
  return found == modifierNames.end() ? nullptr : &*found;
}

}  // namespace

bool carriesFn(std::uint16_t keyCode) {
  return std::ranges::find(keysThatCarryFn, keyCode) != keysThatCarryFn.end();
}

std::string keyName(std::uint16_t keyCode) {
  if (keyCode == escapeKeyCode) return "Escape";
  if (keyCode == sectionKeyCode) return std::string{sectionKeyName};
  if (const auto* key = findKeyName(keyCode)) return std::string{key->displayName};
  if (const auto* modifier = findModifier(keyCode)) return std::string{modifier->name};
  return "key " + std::to_string(keyCode);
}

std::string keyEventText(std::uint32_t type, const KeyEvent& event) {
  auto text = keyName(event.keyCode);
  if (type == keyEventType::keyDown) text += event.isRepeat ? " repeat" : " down";
  if (type == keyEventType::keyUp) text += " up";
  if (type == keyEventType::flagsChanged) {
    const auto* modifier = findModifier(event.keyCode);
    if (modifier) return text + ((event.flags & modifier->key.flags) != 0 ? " down" : " up");
    text += " flags";
  }
  std::string modifiers;
  for (const auto& [flag, name] : flagNames) {
    const bool saysNothing = type != keyEventType::flagsChanged &&
                             flag == keyEventFlag::secondaryFn && carriesFn(event.keyCode);
    if (saysNothing) continue;
    if ((event.flags & flag) != 0)
      modifiers += (modifiers.empty() ? " with " : "+") + std::string{name};
  }
  return text + modifiers;
}

}  // namespace keyrow::sim
