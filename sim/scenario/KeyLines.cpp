#include "sim/scenario/KeyLines.h"

#include <algorithm>
#include <array>
#include <ranges>

#include "platform/VirtualKeys.h"
#include "sim/machine/PropertyText.h"
#include "sim/scenario/Language.h"

namespace keyrow::sim {

namespace {

/// The keyboard that the filters know; those that no keyboard tells of share one.
std::string filterOf(const Keys& what) { return what.keyboard.value_or(""); }

std::string on(const Keys& what) { return " on " + what.keyboard.value_or("none"); }

/// Whether nobody else on the machine gets these keys.
bool isExclusive(Stage& stage, const Keys& what) {
  const auto keyboard = what.keyboard ? stage.mac.keyboards.find(*what.keyboard) : nullptr;
  return keyboard && keyboard->isExclusive;
}

/// Lets the keys go down in turn; says so, and does nothing, where one cannot.
Outcome hold(Stage& stage, const Keys& what) {
  if (what.keyboard && !stage.mac.keyboards.find(*what.keyboard)) {
    return stage.noSuchKeyboard(*what.keyboard);
  }
  if (isExclusive(stage, what)) return {};
  auto& filters = stage.mac.keyboardFilters;
  for (const auto& key : what.keys) {
    if (filters.isDown(filterOf(what), key.keyCode)) {
      return unplayable(keyName(key.keyCode) + " is held already" + on(what));
    }
  }
  for (const auto& key : what.keys) filters.press(filterOf(what), key, what.lateness);
  return {};
}

/// Lets the keys come up in the opposite order; says so, and does nothing, where one is not
/// down.
Outcome letGo(Stage& stage, const Keys& what) {
  if (isExclusive(stage, what)) return {};
  auto& filters = stage.mac.keyboardFilters;
  for (const auto& key : what.keys) {
    if (!filters.isDown(filterOf(what), key.keyCode)) {
      return unplayable(keyName(key.keyCode) + " is not held" + on(what));
    }
  }
  for (const auto& key : std::views::reverse(what.keys)) {
    filters.release(filterOf(what), key, what.lateness);
  }
  return {};
}

}  // namespace

Outcome AttachKeyboard::play(Stage& stage) const {
  auto attached = keyboard;
  if (needsRegistryID && !attached.registryID) attached.registryID = stage.nextRegistryID();
  stage.mac.keyboardFilters.releaseAll(name);
  stage.mac.keyboards.attach(name, std::move(attached));
  return {};
}

Outcome Unplug::play(Stage& stage) const {
  stage.mac.keyboardFilters.releaseAll(name);
  return stage.mac.keyboards.unplug(name) ? Outcome{} : stage.noSuchKeyboard(name);
}

Outcome Press::play(Stage& stage) const {
  auto outcome = hold(stage, keys);
  return outcome.kind == Outcome::Kind::done ? letGo(stage, keys) : outcome;
}

Outcome HoldDown::play(Stage& stage) const { return hold(stage, keys); }

Outcome Release::play(Stage& stage) const { return letGo(stage, keys); }

Outcome ChangeFlags::play(Stage& stage) const {
  stage.mac.postKeyEvent(
      keyEventType::flagsChanged,
      {.timestamp = stage.mac.machAbsoluteTime(), .flags = flags, .keyCode = key.keyCode});
  return {};
}

Outcome SwitchCapsLock::play(Stage& stage) const {
  if (keyboard && !stage.mac.keyboards.find(*keyboard)) return stage.noSuchKeyboard(*keyboard);
  stage.mac.setCapsLock(isOn, keyboard.value_or(""));
  return {};
}

Outcome StampEvents::play(Stage& stage) const {
  stage.mac.areEventTimesNanoseconds = inNanoseconds;
  return {};
}

Outcome DisableTap::play(Stage& stage) const {
  stage.mac.eventTaps.disableAll(announcement);
  return {};
}

namespace {

/// A property of a keyboard as scenarios write it, and as the HID system names it.
struct KeyboardProperty {
  std::string_view word;
  std::string_view name;
  /// Whether it is a text by nature, which needs no quotation marks.
  bool isText;
};
constexpr std::array<KeyboardProperty, 8> keyboardProperties{{
    {"vendor", "VendorID", false},
    {"product-id", "ProductID", false},
    {"product", "Product", true},
    {"manufacturer", "Manufacturer", true},
    {"transport", "Transport", true},
    {"built-in", "Built-In", false},
    {"location", "LocationID", false},
    {"caps-lock", "HIDCapsLockState", false},
}};

constexpr std::string_view keyboardPropertyExpected =
    "vendor=, product-id=, product=, manufacturer=, transport=, built-in=, location=, caps-lock=, "
    "registry=, usage= or exclusive=";

Action parseKeyboard(LineReader& line) {
  if (line.at("none")) line.fail("a name for the keyboard other than none");
  AttachKeyboard attach{.name = line.word("a name for the keyboard"), .keyboard = {}};
  auto& keyboard = attach.keyboard;
  while (!line.atEnd()) {
    const auto property = line.property(keyboardPropertyExpected);
    const auto known = std::ranges::find(keyboardProperties, property.key, &KeyboardProperty::word);
    const bool isText = known != keyboardProperties.end() && known->isText;
    if (!property.isPlain && !isText) {
      line.failBefore(known == keyboardProperties.end()
                          ? keyboardPropertyExpected
                          : "a number, true or false, or a text in quotation marks");
    }
    const auto* number = property.value ? property.value->integer() : nullptr;
    if (known != keyboardProperties.end()) {
      keyboard.properties.erase(std::string{known->name});
      if (property.value) keyboard.properties.emplace(known->name, *property.value);
    } else if (property.key == "registry" && !property.value) {
      attach.needsRegistryID = false;
    } else if (property.key == "registry" && number) {
      keyboard.registryID = static_cast<std::uint64_t>(*number);
    } else if (property.key == "usage" && number) {
      keyboard.usage = *number;
    } else if (property.key == "exclusive" && property.value && property.value->boolean()) {
      keyboard.isExclusive = *property.value->boolean();
    } else {
      line.failBefore(keyboardPropertyExpected);
    }
  }
  return attach;
}

Action parseUnplug(LineReader& line) { return Unplug{line.word("the name of a keyboard")}; }

/// Takes keys joined by "+"; a "+" never stands for a key.
std::vector<NamedKey> parseKeys(LineReader& line) {
  const auto text = line.word("a key, such as A, F5 or fn+`");
  std::vector<NamedKey> keys;
  for (std::size_t start = 0; start <= text.size();) {
    const auto stop = std::min(text.find('+', start), text.size());
    const auto key = keyNamed(std::string_view{text}.substr(start, stop - start));
    if (!key) line.failBefore("keys joined by +, such as A, F5, fn+` or left-control+Escape");
    keys.push_back(*key);
    start = stop + 1;
  }
  return keys;
}

/// Takes what follows the keys: the keyboard that they are on, and how late it tells.
Keys onKeyboard(LineReader& line, std::vector<NamedKey> keys) {
  Keys result{.keys = std::move(keys), .keyboard = std::nullopt};
  line.require("on");
  if (!line.accept("none")) result.keyboard = line.word("the name of a keyboard, or none");
  if (line.accept("late")) result.lateness = line.duration();
  return result;
}

Keys keysOnKeyboard(LineReader& line) {
  auto keys = parseKeys(line);
  if (std::ranges::find(keys, virtualKey::capsLock, &NamedKey::keyCode) != keys.end()) {
    line.failBefore("keys other than Caps Lock, for which there is caps-lock on|off");
  }
  return onKeyboard(line, std::move(keys));
}

Action parsePress(LineReader& line) { return Press{keysOnKeyboard(line)}; }

Action parseHold(LineReader& line) { return HoldDown{keysOnKeyboard(line)}; }

Action parseRelease(LineReader& line) { return Release{keysOnKeyboard(line)}; }

Action parseFlagsChanged(LineReader& line) {
  const auto keys = parseKeys(line);
  if (keys.size() != 1) line.failBefore("a single key");
  ChangeFlags change{.key = keys.front()};
  if (line.accept("with")) {
    for (const auto& modifier : parseKeys(line)) {
      if (modifier.flags == 0) line.failBefore("modifiers joined by +, such as fn+shift");
      change.flags |= modifier.flags;
    }
  }
  return change;
}

Action parseCapsLock(LineReader& line) {
  constexpr std::array<std::string_view, 2> words{"on", "off"};
  SwitchCapsLock action{.isOn = line.oneOf(words) == 0, .keyboard = std::nullopt};
  if (line.accept("on")) action.keyboard = line.word("the name of a keyboard");
  return action;
}

Action parseTimestamps(LineReader& line) {
  constexpr std::array<std::string_view, 2> units{"ticks", "nanoseconds"};
  return StampEvents{.inNanoseconds = line.oneOf(units) == 1};
}

Action parseDisableTap(LineReader& line) {
  constexpr std::array<std::string_view, 3> ways{"timeout", "user-input", "silently"};
  constexpr std::array<std::uint32_t, 3> announcements{keyEventType::tapDisabledByTimeout,
                                                       keyEventType::tapDisabledByUserInput, 0};
  return DisableTap{announcements[line.oneOf(ways)]};
}

Expectation expectTap(LineReader& line) {
  constexpr std::array<std::string_view, 3> states{"working", "missing", "stalled"};
  std::string state{states[line.oneOf(states)]};
  if (line.accept("->")) {
    return changePattern(TimelineEvent::Kind::tap, {}, state,
                         std::string{states[line.oneOf(states)]});
  }
  return [state](Stage& stage) {
    return expectEqual("the event tap", state, stage.mac.eventTaps.state());
  };
}

Expectation expectKey(LineReader& line) {
  return EventPattern{TimelineEvent::Kind::key, {line.maybeQuoted()}};
}

Expectation expectSource(LineReader& line) {
  const auto name = line.word("the name of a keyboard, or none");
  const auto offset = line.accept("at") ? line.signedDuration() : std::chrono::nanoseconds{0};
  return [name, offset](Stage& stage) {
    if (!stage.process()) return Stage::keyrowMissing("the source to be " + name);
    const auto tickOffset = offset.count() * std::int64_t{stage.mac.machTimebase.denom} /
                            std::int64_t{stage.mac.machTimebase.numer};
    const auto now = static_cast<std::int64_t>(stage.mac.machAbsoluteTime());
    const auto timestamp = static_cast<std::uint64_t>(std::max<std::int64_t>(now + tickOffset, 0));
    const auto source = stage.process()->keyrow().keyboardSourceMonitor().source(timestamp);
    return expectEqual(
        "the source of a key event now", name,
        stage.mac.keyboards.nameOf(source ? source->registryID : std::nullopt).value_or("none"));
  };
}

Expectation expectShortcut(LineReader& line) {
  return [expected = line.quotedText("the name of a key in quotation marks")](Stage& stage) {
    if (!stage.process()) return Stage::keyrowMissing("the shortcut to be " + expected);
    return expectEqual("the shortcut", expected,
                       stage.process()->keyrow().settings().localToggleShortcut().displayName);
  };
}

constexpr std::array<ActionWord, 9> actions{{
    {"keyboard", "keyboard NAME [PROPERTY=VALUE ...]",
     "A keyboard is attached. Its properties are vendor, product-id, product, manufacturer, "
     "transport, built-in, location and caps-lock (what it reports), absent where not given; "
     "registry, its registry entry ID or none; usage, 6 for a keyboard and 7 for a keypad; and "
     "exclusive, true where another program has it to itself, so that its keys go nowhere else.",
     "keyboard usb1 vendor=0x046d product=\"G Pro\" transport=USB built-in=false", parseKeyboard},
    {"unplug", "unplug NAME",
     "A keyboard is taken away; the keys that are held on it are released.", "unplug usb1",
     parseUnplug},
    {"press", "press KEYS on NAME|none [late DURATION]",
     "Keys are pressed and released on a keyboard. With none no keyboard tells that it was the "
     "one; with late it tells that much later than the keys arrive.",
     "press fn+` on usb1", parsePress},
    {"hold", "hold KEYS on NAME|none [late DURATION]",
     "Keys are pressed and not released. The last of them repeats while time passes: after 500 ms, "
     "and then every 83 ms.",
     "hold fn+` on usb1", parseHold},
    {"release", "release KEYS on NAME|none [late DURATION]", "Keys that are held are released.",
     "release fn+` on usb1", parseRelease},
    {"flags-changed", "flags-changed KEY [with MODIFIERS]",
     "A flags-changed event of any key, with the flags of these modifiers.",
     "flags-changed F5 with fn", parseFlagsChanged},
    {"caps-lock", "caps-lock on|off [on NAME]",
     "Caps Lock is switched on or off; the keyboard, where one is named, reports it.",
     "caps-lock on on usb1", parseCapsLock},
    {"timestamps", "timestamps ticks|nanoseconds",
     "In which unit key events tell their time from now on; in the beginning it is ticks.",
     "timestamps nanoseconds", parseTimestamps},
    {"disable tap", "disable tap timeout|user-input|silently",
     "macOS disables the event tap: because it took too long, because the user wanted it, or "
     "without telling.",
     "disable tap timeout", parseDisableTap},
}};

constexpr std::array<ExpectationWord, 4> expectations{{
    {"key", "expect key [\"TEXT\"]",
     "What came of keys: one that reached an application, or a media key.",
     "expect key \"F5 down reaches com.apple.TextEdit\"", expectKey},
    {"tap", "expect tap working|missing|stalled [-> working|missing|stalled]",
     "Whether an event tap is in place and enabled, and whether it stalls the keys, or a change of "
     "that.",
     "expect tap working", expectTap},
    {"source", "expect source NAME|none [at +DURATION|-DURATION]",
     "The keyboard to which Keyrow attributes a key event of this moment, or of one later or "
     "earlier.",
     "expect source usb1 at +10ms", expectSource},
    {"shortcut", "expect shortcut \"NAME\"", "The key of the per-app shortcut.",
     "expect shortcut \"F5\"", expectShortcut},
}};

}  // namespace

LanguagePart keyLines() { return {actions, expectations}; }

}  // namespace keyrow::sim
