#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/KeyNames.h"
#include "core/KeyboardFnStates.h"
#include "fuzz/ArbitraryValues.h"
#include "fuzz/Require.h"
#include "fuzz/SameValues.h"
#include "platform/HidSystem.h"
#include "platform/Platform.h"
#include "sim/machine/SimulatedMac.h"
#include "sim/ports/SimulatedProcess.h"

namespace keyrow::sim {
namespace {

using fuzz::isSame;
using fuzz::require;
using fuzz::without;

/// The mode that a stored value stands for.
std::optional<FnState> modeOf(const std::optional<PropertyValue>& value) {
  const auto isOneOf = [&](std::initializer_list<PropertyValue> values) {
    return value && std::ranges::find(values, *value) != values.end();
  };
  if (isOneOf({0, 0.0, false, "0"})) return FnState::special;
  if (isOneOf({1, 1.0, true, "1"})) return FnState::standard;
  return std::nullopt;
}

std::string inSmallLetters(std::string text) {
  std::ranges::transform(text, text.begin(), [](char c) {
    return static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
  });
  return text;
}

bool isNumbers(const std::string& text) {
  static const std::regex numbers{
      "([0-9a-f]{4}|[1-9a-f][0-9a-f]{4,7}):([0-9a-f]{4}|[1-9a-f][0-9a-f]{4,7})"};
  return text.size() <= 17 && std::regex_match(text, numbers);
}

/// A Keyrow whose settings hold anything, and what has to be read from them all the same.
class Settings {
 public:
  explicit Settings(FuzzedDataProvider& data) : data_{data} {}

  void run() {
    // Much slower than all else.
    const bool isLaunched = data_.ConsumeIntegralInRange(0, 3) == 3;
    if (isLaunched) prepareMachine();
    constexpr int enough = 100;
    for (int step = 0; step < enough && data_.remaining_bytes() > 0; ++step) {
      change();
      checkReadings();
    }
    if (isLaunched) launchAndQuit();
  }

 private:
  void change() {
    switch (data_.ConsumeIntegralInRange(0, 11)) {
      case 0:
        return changeGlobal();
      case 1:
        return setOverride();
      case 2:
        return removeOverrides();
      case 3:
        return changeBooleans();
      case 4:
        return changeReplacement();
      case 5:
        return changeShortcut();
      case 6:
        return storeShortcut();
      case 7:
        return setKeyboardMode();
      case 8:
        return storeKeyboardModes();
      default: {
        const auto key = data_.PickValueInArray(settingsKey::all);
        store(key, fuzz::arbitraryOptionalValue(data_));
      }
    }
  }

  void store(std::string_view key, std::optional<PropertyValue> value) {
    mac.defaults.setValue(appIdentifier, key, std::move(value));
  }

  PropertyDictionary domain() const { return mac.defaults.domain(appIdentifier); }
  std::optional<PropertyValue> stored(std::string_view key) const {
    return mac.defaults.value(appIdentifier, key);
  }
  PropertyDictionary overrides() const {
    const auto value = stored(settingsKey::localFnState);
    return value && value->dictionary() ? *value->dictionary() : PropertyDictionary{};
  }

  /// Changes settings; all others have to stay as they are.
  template <typename Change>
  void changeOnly(const std::vector<std::string_view>& keys, const Change& changeThem) {
    const std::vector<std::string> changed(keys.begin(), keys.end());
    const auto before = without(domain(), changed);
    changeThem();
    require(isSame(before, without(domain(), changed)), "a write leaves other settings alone");
  }

  FnState arbitraryMode() { return data_.ConsumeBool() ? FnState::standard : FnState::special; }

  /// An application, often one that has an entry.
  std::string arbitraryApplication() {
    const auto entries = overrides();
    if (entries.empty() || data_.ConsumeBool()) return fuzz::arbitraryString(data_);
    const auto place = data_.ConsumeIntegralInRange(std::ptrdiff_t{0}, std::ssize(entries) - 1);
    return std::next(entries.begin(), place)->first;
  }

  void changeGlobal() {
    const auto mode = arbitraryMode();
    changeOnly({settingsKey::globalFnState}, [&] { states.setGlobal(mode); });
    require(states.global() == mode, "the global mode is what it was set to");
  }

  void setOverride() {
    const auto application = arbitraryApplication();
    const auto mode = arbitraryMode();
    const auto others = without(overrides(), {application});
    changeOnly({settingsKey::localFnState}, [&] { states.setLocal(application, mode); });
    require(states.local(application) == mode, "an override is what it was set to");
    require(isSame(others, without(overrides(), {application})),
            "the entries of other applications survive when an override is set");
  }

  void removeOverrides() {
    const std::vector<std::string> applications{arbitraryApplication(), arbitraryApplication()};
    const auto others = without(overrides(), applications);
    changeOnly({settingsKey::localFnState}, [&] { states.removeLocals(applications); });
    require(isSame(others, overrides()),
            "overrides are removed, and the entries of other applications survive");
  }

  PropertyDictionary keyboardModes() const {
    const auto value = stored(settingsKey::keyboardFnStates);
    return value && value->dictionary() ? *value->dictionary() : PropertyDictionary{};
  }

  KeyboardNumbers arbitraryNumbers() {
    if (data_.ConsumeBool()) {
      return {data_.ConsumeIntegralInRange(10U, 11U), data_.ConsumeIntegralInRange(10U, 11U)};
    }
    const auto vendorID = data_.ConsumeIntegral<std::uint32_t>();
    return {vendorID, data_.ConsumeIntegral<std::uint32_t>()};
  }

  void setKeyboardMode() {
    const auto numbers = arbitraryNumbers();
    const auto mode = data_.ConsumeBool() ? std::optional{arbitraryMode()} : std::nullopt;
    auto others = keyboardModes();
    std::erase_if(others,
                  [&](const auto& entry) { return inSmallLetters(entry.first) == numbers.text(); });
    changeOnly({settingsKey::keyboardFnStates}, [&] { keyboardStates.set(numbers, mode); });
    require(keyboardStates.of(numbers) == mode, "a keyboard's mode is what it was set to");
    require(isSame(others, without(keyboardModes(), {numbers.text()})),
            "the entries of other keyboards survive, and at most one of this");
  }

  /// As another program would.
  void storeKeyboardModes() {
    PropertyDictionary modes;
    for (auto count = data_.ConsumeIntegralInRange(0, 4); count > 0; --count) {
      auto text = arbitraryNumbers().text();
      if (data_.ConsumeBool()) std::ranges::replace(text, 'a', 'A');
      modes.insert_or_assign(std::move(text), data_.ConsumeBool()
                                                  ? PropertyValue{data_.ConsumeBool()}
                                                  : fuzz::arbitraryValue(data_));
    }
    store(settingsKey::keyboardFnStates, std::move(modes));
  }

  void checkKeyboardModes() {
    std::map<std::string, FnState> expectedModes;
    for (const auto& [text, value] : keyboardModes()) {
      const auto numbers = inSmallLetters(text);
      const auto mode = modeOf(value);
      if (!mode || !isNumbers(numbers)) continue;
      if (text == numbers) expectedModes.insert_or_assign(numbers, *mode);
      expectedModes.emplace(numbers, *mode);
    }
    std::map<std::string, FnState> read;
    for (const auto& [numbers, mode] : keyboardStates.all()) {
      read.emplace(numbers.text(), mode);
      KeyboardDeviceSource source;
      source.vendorID = numbers.vendorID;
      source.productID = numbers.productID;
      require(process.keyrow().keyboardModes().of(source) == mode,
              "keys see the modes of keyboards as they are at the moment");
    }
    require(read == expectedModes, "a keyboard's mode is what is stored under its numbers");
  }

  void changeBooleans() {
    const bool value = data_.ConsumeBool();
    const auto& row = data_.PickValueInArray(booleanSettingTable);
    changeOnly({row.key}, [&] { settings().set(row.setting, value); });
    require(settings().isOn(row.setting) == value, "a Boolean is what it was set to");
  }

  void changeReplacement() {
    std::optional<FnReplacementModifier> modifier;
    if (data_.ConsumeBool()) modifier = data_.PickValueInArray(fnReplacementModifierTable).first;
    changeOnly({settingsKey::fnReplacementModifier},
               [&] { settings().setFnReplacementModifier(modifier); });
    require(settings().fnReplacementModifier() == modifier,
            "the modifier that stands in for Fn is what it was set to");
  }

  void changeShortcut() {
    const auto change = [this] {
      if (data_.ConsumeIntegralInRange(0, 3) == 0) {
        settings().resetLocalToggleShortcut();
        require(settings().localToggleShortcut() == defaultLocalToggleShortcut(),
                "a reset brings the default shortcut");
        return;
      }
      const auto keyCode = static_cast<std::uint16_t>(fuzz::arbitraryInteger(data_));
      const auto characters = data_.ConsumeRandomLengthString(12);
      const auto shortcut = settings().makeLocalToggleShortcut(keyCode, characters);
      checkNames(shortcut);
      settings().setLocalToggleShortcut(shortcut);
      const auto read = settings().localToggleShortcut();
      require(keyCode == escapeKeyCode
                  ? read == defaultLocalToggleShortcut()
                  : read.keyCode == keyCode && read.displayName == shortcut.displayName,
              "a shortcut is what it was set to, unless that is Escape");
    };
    changeOnly({settingsKey::localToggleShortcut.begin(), settingsKey::localToggleShortcut.end()},
               change);
  }

  /// As another program would, with little respect for what belongs there.
  void storeShortcut() {
    store(settingsKey::localToggleShortcutKeyCode, fuzz::arbitraryInteger(data_));
    for (const auto key : {settingsKey::localToggleShortcutDisplayName,
                           settingsKey::localToggleShortcutMenuKeyEquivalent}) {
      store(key, data_.ConsumeBool() ? data_.ConsumeRandomLengthString(3)
                                     : fuzz::arbitraryOptionalValue(data_));
    }
  }

  static void checkNames(const LocalToggleShortcut& shortcut) {
    require(!shortcut.displayName.empty(), "a key has a name to show");
    // Only a key of the table may have a name and no character.
    require(!shortcut.menuKeyEquivalent || !shortcut.menuKeyEquivalent->empty() ||
                findKeyName(shortcut.keyCode),
            "a menu key equivalent is a character, or there is none");
  }

  void checkReadings() {
    const auto before = domain();
    const auto writesBefore = mac.defaults.writeCount();
    checkModes();
    checkKeyboardModes();
    checkShortcut();
    for (const auto& row : booleanSettingTable) {
      checkBoolean(settings().isOn(row.setting), row.key);
    }
    checkBoolean(settings().hasPromptedAccessibility(), settingsKey::hasPromptedAccessibility);
    checkReplacement();
    checkKeySettings();
    require(mac.defaults.writeCount() == writesBefore && isSame(before, domain()),
            "reading writes nothing");
  }

  void checkModes() {
    require(states.global() == modeOf(stored(settingsKey::globalFnState)),
            "only 0 and 1 are a global mode");
    const auto entries = overrides();
    for (const auto& [application, value] : entries) {
      require(states.local(application) == modeOf(value), "only 0 and 1 are an override");
    }
    require(states.localBundleIdentifiers().size() == entries.size(), "every entry is named");
  }

  void checkShortcut() {
    const auto shortcut = settings().localToggleShortcut();
    checkNames(shortcut);
    require(shortcut.keyCode != escapeKeyCode, "the per-app shortcut is never Escape");
    require(shortcut.keyCode == settings().localToggleShortcutKeyCode(),
            "the shortcut and its key code belong together");
    const auto value = stored(settingsKey::localToggleShortcutKeyCode);
    const auto* code = value ? value->integer() : nullptr;
    if (!code || *code == escapeKeyCode) {
      require(shortcut == defaultLocalToggleShortcut(), "without a key the default holds");
    } else {
      require(shortcut.keyCode == std::clamp<std::int64_t>(*code, 0, 0xFFFF),
              "a key code is brought into its range");
    }
  }

  void checkBoolean(bool read, std::string_view key) const {
    const auto value = stored(key);
    const auto* text = value ? value->string() : nullptr;
    if (!text) {
      require(read == (value && value->boolValue() == true),
              "a Boolean is true for true and for a number other than 0");
    } else if (read) {
      require(text->size() <= 4 && text->find_first_not_of("1YESyesTRUEtrue") == std::string::npos,
              "of all texts only 1, YES and true are true");
    }
  }

  void checkReplacement() {
    const auto modifier = settings().fnReplacementModifier();
    const auto value = stored(settingsKey::fnReplacementModifier);
    if (modifier) {
      require(value == PropertyValue{rawValue(*modifier)}, "a modifier is what is stored");
    } else {
      require(!value || !value->string() || !fnReplacementModifierFromRawValue(*value->string()),
              "every known modifier counts");
    }
  }

  void checkKeySettings() {
    const auto current = process.keyrow().keySettings().current();
    const auto modifier = settings().fnReplacementModifier();
    require(current.fnLikeFlags == (0x800000 | (modifier ? deviceFlag(*modifier) : 0)) &&
                current.localToggleShortcutKeyCode == settings().localToggleShortcutKeyCode() &&
                current.applyFnModeToExternalFunctionKeys ==
                    settings().isOn(BooleanSetting::applyFnModeToExternalFunctionKeys) &&
                current.enhancedDiagnosticsEnabled ==
                    settings().isOn(BooleanSetting::enhancedDiagnosticsEnabled),
            "keys see the settings as they are at the moment");
  }

  void prepareMachine() {
    // An event tap needs a thread, and has nothing to do with what is tried here.
    mac.faults.fail(PortCall::createEventTap, Faults::always);
    mac.isAccessibilityGranted = data_.ConsumeBool();
    constexpr std::array answers{InputMonitoringAccess::granted, InputMonitoringAccess::denied,
                                 InputMonitoringAccess::unknown};
    mac.inputMonitoring.set(data_.PickValueInArray(answers));
    mac.globalPreferences.setValue(GlobalPreferences::domain, FnStateController::fnStateDefaultsKey,
                                   fuzz::arbitraryOptionalValue(data_));
    auto parameters = fuzz::arbitraryOptionalValue(data_);
    if (parameters && data_.ConsumeBool()) {
      parameters = PropertyDictionary{{std::string{hidFKeyModeKey}, *std::move(parameters)}};
    }
    mac.hid.setParameters(std::move(parameters));
  }

  /// Keyrow lives with whatever the machine and its settings hold, and leaves the global mode
  /// behind.
  void launchAndQuit() {
    process.launch();
    mac.scheduler.advance(std::chrono::seconds{3});
    process.reopen();
    checkReadings();
    process.terminate();
    if (const auto global = modeOf(stored(settingsKey::globalFnState))) {
      require(mac.hid.parameter(hidFKeyModeKey) == PropertyValue{rawValue(*global)},
              "the keyboard is left in the global mode");
      require(mac.globalPreferences.value(GlobalPreferences::domain,
                                          FnStateController::fnStateDefaultsKey) ==
                  PropertyValue{*global == FnState::standard},
              "the system preference is left in the global mode");
    }
  }

  AppSettings& settings() { return process.keyrow().settings(); }

  FuzzedDataProvider& data_;
  SimulatedMac mac;
  SimulatedProcess process{mac, 501};
  StoredFnStates states{process.platform().userDefaults};
  KeyboardFnStates keyboardStates{process.platform().userDefaults};
};

}  // namespace
}  // namespace keyrow::sim

/// Whatever the settings hold, they read as something that makes sense, and what is none of a
/// write's business survives it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  FuzzedDataProvider data{bytes, size};
  keyrow::sim::Settings{data}.run();
  return 0;
}
