#include "desk/TopRow.h"

#include <array>
#include <memory>
#include <optional>
#include <utility>

#include "input/ExternalKeyboardFunctionRowMapper.h"
#include "input/KeyboardSourceMonitor.h"
#include "sim/ports/SimulatedEventPoster.h"
#include "sim/ports/SimulatedText.h"

namespace keyrow::desk {

namespace {

using sim::SimulatedKeyboard;
using sim::Stage;

/// The key codes that an Apple top row sends in the special mode.
constexpr std::array<std::pair<std::uint16_t, std::string_view>, 4> specialKeys{{
    {160, "Mission Control"},
    {177, "Spotlight"},
    {176, "Dictation"},
    {178, "Do Not Disturb"},
}};

/// A keyboard's properties, read without asking the HID system.
class QuietDevice final : public HidDevice {
 public:
  explicit QuietDevice(const SimulatedKeyboard& keyboard) : keyboard_{keyboard} {}

  std::optional<std::uint64_t> registryEntryID() override { return keyboard_.registryID; }
  std::optional<PropertyValue> property(std::string_view key) override {
    const auto found = keyboard_.properties.find(key);
    return found == keyboard_.properties.end() ? std::nullopt : std::optional{found->second};
  }

 private:
  const SimulatedKeyboard& keyboard_;
};

/// The mode that reading the hardware would give; absent where it would fail.
std::optional<FnState> readableMode(const sim::SimulatedMac& mac) {
  using enum sim::PortCall;
  if (mac.faults.isNextToFail(findService) || mac.faults.isNextToFail(readServiceProperty)) {
    return std::nullopt;
  }
  const auto mode = mac.hid.modeName();
  if (mode == "special") return FnState::special;
  if (mode == "standard") return FnState::standard;
  return std::nullopt;
}

/// The Keyrow whose tap would see a key now; null when none would.
sim::SimulatedProcess* watcher(Stage& stage) {
  auto* process = stage.process();
  if (!process || process->isHanging()) return nullptr;
  const auto& mac = stage.mac;
  const bool isSeen =
      mac.isAccessibilityGranted && !mac.isSecureInputOn() && mac.eventTaps.state() == "working";
  return isSeen ? process : nullptr;
}

/// The keyboard as Keyrow would know it; absent where it does not hear of its keys.
std::optional<KeyboardDeviceSource> knownSource(sim::SimulatedProcess& process,
                                                const SimulatedKeyboard& keyboard) {
  // `kHIDPage_KeyboardOrKeypad`.
  constexpr std::uint32_t keyboardPage = 7;
  if (!process.simulatedPlatform().hidManagers.hears(keyboard, keyboardPage)) return std::nullopt;
  QuietDevice device{keyboard};
  sim::SimulatedText text;
  return KeyboardSourceMonitor::readSource(device, keyboard.registryID, text);
}

std::string nameOf(const TranslatedAction& action) {
  if (const auto* auxiliary = std::get_if<AuxiliaryAction>(&action)) {
    return sim::mediaKeyName(auxiliary->keyType);
  }
  if (const auto* application = std::get_if<OpenApplicationAction>(&action)) {
    return std::string{application->label};
  }
  if (const auto* url = std::get_if<OpenURLAction>(&action)) return std::string{url->label};
  return std::string{std::get<KeyStrokeAction>(action).label};
}

/// What Keyrow would make of the key; null where it would pass.
const TranslatedAction* translation(Stage& stage, const SimulatedKeyboard& keyboard,
                                    std::uint16_t keyCode) {
  auto* process = watcher(stage);
  if (!process) return nullptr;
  const auto& settings = process->keyrow().settings();
  const KeySettings::Values values{.applyFnModeToExternalFunctionKeys = settings.isOn(
                                       BooleanSetting::applyFnModeToExternalFunctionKeys)};
  const auto source = knownSource(*process, keyboard);
  const auto ownMode = source ? process->keyrow().keyboardModes().of(*source) : std::nullopt;
  const auto evaluation = ExternalKeyboardFunctionRowMapper::decide(
      keyEventType::keyDown, {.timestamp = 0, .flags = 0, .keyCode = keyCode},
      source ? &*source : nullptr, values,
      {.keyboard = ownMode, .hardware = readableMode(stage.mac)});
  return evaluation && evaluation->shouldTranslate ? evaluation->action : nullptr;
}

}  // namespace

std::vector<TopRowKey> topRow(Stage& stage, std::string_view name) {
  constexpr int keyCount = 12;
  const auto keyboard = stage.mac.keyboards.find(name);
  std::vector<TopRowKey> row;
  for (int number = 1; number <= keyCount; ++number) {
    const auto keyName = "F" + std::to_string(number);
    const auto keyCode = sim::keyNamed(keyName)->keyCode;
    const auto outgoing = stage.mac.keyboardFilters.outgoing(name, keyCode);
    TopRowKey key{.name = keyName, .does = keyName};
    if (!outgoing.mediaKey.empty()) {
      key.does = outgoing.mediaKey;
    } else if (outgoing.keyCode != keyCode) {
      for (const auto& [code, what] : specialKeys) {
        if (code == outgoing.keyCode) key.does = what;
      }
    } else if (const auto* action = translation(stage, *keyboard, keyCode)) {
      key.does = nameOf(*action);
      key.isTranslated = true;
    }
    row.push_back(std::move(key));
  }
  return row;
}

}  // namespace keyrow::desk
