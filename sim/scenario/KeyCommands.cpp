#include <array>
#include <ranges>
#include <vector>

#include "sim/machine/KeyText.h"
#include "sim/scenario/Command.h"

namespace keyrow::sim {

namespace {

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

using KeyAction = std::function<void(Stage&, const std::string&)>;

/// Something that is done "on" a keyboard, or on none that sends an input.
Play onKeyboard(LineReader& line, KeyAction action) {
  line.require("on");
  return [action = std::move(action),
          name = line.word("the name of a keyboard, or none")](Stage& stage) {
    if (name != "none" && !stage.mac.keyboards.find(name)) {
      return unplayable("no keyboard " + name + " is attached");
    }
    action(stage, name);
    return Outcome{};
  };
}

void press(Stage& stage, const std::string& keyboard, const std::vector<NamedKey>& keys) {
  for (const auto& key : keys) stage.changeKey(keyboard, key, true);
}

void release(Stage& stage, const std::string& keyboard, const std::vector<NamedKey>& keys) {
  for (const auto& key : std::views::reverse(keys)) stage.changeKey(keyboard, key, false);
}

Play parsePress(LineReader& line) {
  return onKeyboard(line, [keys = parseKeys(line)](Stage& stage, const std::string& keyboard) {
    press(stage, keyboard, keys);
    release(stage, keyboard, keys);
  });
}

Play parseHold(LineReader& line) {
  return onKeyboard(line, [keys = parseKeys(line)](Stage& stage, const std::string& keyboard) {
    press(stage, keyboard, keys);
  });
}

Play parseRelease(LineReader& line) {
  return onKeyboard(line, [keys = parseKeys(line)](Stage& stage, const std::string& keyboard) {
    release(stage, keyboard, keys);
  });
}

Play parseRepeat(LineReader& line) {
  const auto keys = parseKeys(line);
  const auto times = line.number(1000);
  line.require("times");
  return onKeyboard(line, [keys, times](Stage& stage, const std::string& keyboard) {
    for (std::uint64_t time = 0; time < times; ++time) {
      stage.changeKey(keyboard, keys.back(), true);
      stage.mac.scheduler.runReady();
    }
  });
}

Play parseDisableTap(LineReader& line) {
  constexpr std::array<std::string_view, 3> ways{"timeout", "user-input", "silently"};
  constexpr std::array<std::uint32_t, 3> types{keyEventType::tapDisabledByTimeout,
                                               keyEventType::tapDisabledByUserInput, 0};
  return [type = types[line.oneOf(ways)]](Stage& stage) {
    stage.mac.eventTaps.disableAll(type);
    return Outcome{};
  };
}

Play expectTap(LineReader& line) {
  constexpr std::array<std::string_view, 2> states{"working", "missing"};
  return [expected = std::string{states[line.oneOf(states)]}](Stage& stage) {
    return expectEqual("the event tap", expected,
                       stage.mac.eventTaps.enabledCount() > 0 ? "working" : "missing");
  };
}

Play expectKey(LineReader& line) {
  const bool nothing = line.accept("nothing");
  const auto expected = nothing ? std::string{} : line.quotedText("an event in quotation marks");
  return [nothing, expected](Stage& stage) {
    return expectEvent(stage, TimelineEvent::Kind::key,
                       nothing ? std::nullopt : std::optional{expected}, "from the keys");
  };
}

constexpr std::array<Command, 5> commands{{
    {"press", "press KEYS on NAME|none",
     "Keys are pressed and released on a keyboard: key names joined by +. With none no keyboard "
     "tells that it was the one.",
     "press fn+` on usb1", parsePress},
    {"hold", "hold KEYS on NAME|none", "Keys are pressed and not released.", "hold fn+` on usb1",
     parseHold},
    {"repeat", "repeat KEYS N times on NAME|none", "The last of the keys that are held repeats.",
     "repeat fn+` 10 times on usb1", parseRepeat},
    {"release", "release KEYS on NAME|none", "Keys that were held are released.",
     "release fn+` on usb1", parseRelease},
    {"disable tap", "disable tap timeout|user-input|silently",
     "macOS disables the event tap: because it took too long, because the user wanted it, or "
     "without telling.",
     "disable tap timeout", parseDisableTap},
}};

constexpr std::array<Command, 2> expectationTable{{
    {"expect tap", "expect tap working|missing", "Whether an event tap is in place and enabled.",
     "expect tap working", expectTap},
    {"expect key", "expect key \"EVENT\"|nothing",
     "What came of keys since the last action began: a key that reached an application, or a "
     "media key.",
     "expect key \"F5 down reaches com.apple.TextEdit\"", expectKey},
}};

}  // namespace

std::span<const Command> keyCommands() { return commands; }

std::span<const Command> keyExpectations() { return expectationTable; }

}  // namespace keyrow::sim
