#include "core/Status.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <utility>

#include "core/AppSettings.h"
#include "core/KeyboardFnStates.h"
#include "core/NamedSettings.h"
#include "core/Properties.h"
#include "core/StoredFnStates.h"

namespace keyrow {

namespace {

using States = std::map<std::string, FnState, std::less<>>;

namespace word {
constexpr std::string_view mode = "mode";
constexpr std::string_view source = "source";
constexpr std::string_view application = "application";
constexpr std::string_view global = "global";
constexpr std::string_view overrides = "overrides";
constexpr std::string_view keyboardModes = "keyboardModes";
constexpr std::string_view translatesTopRows = "translatesTopRows";
constexpr std::string_view settings = "settings";
constexpr std::string_view running = "running";
constexpr std::string_view processIdentifier = "processIdentifier";
constexpr std::string_view isTrusted = "isTrusted";
constexpr std::string_view inputMonitoring = "inputMonitoring";
constexpr std::string_view hasEventTap = "hasEventTap";
constexpr std::string_view isSessionActive = "isSessionActive";
constexpr std::string_view seesKeyboards = "seesKeyboards";
constexpr std::string_view isKeyboardSeized = "isKeyboardSeized";
constexpr std::string_view keyboards = "keyboards";
constexpr std::string_view name = "name";
constexpr std::string_view numbers = "numbers";
constexpr std::string_view isTranslatable = "isTranslatable";
}  // namespace word

bool flag(const PropertyDictionary& dictionary, std::string_view key) {
  const auto* value = findProperty(dictionary, key);
  return value && value->boolValue().value_or(false);
}

std::optional<std::string> text(const PropertyDictionary& dictionary, std::string_view key) {
  const auto* string = findText(dictionary, key);
  return string ? std::optional{*string} : std::nullopt;
}

std::int64_t number(const PropertyDictionary& dictionary, std::string_view key) {
  const auto* integer = findInteger(dictionary, key);
  return integer ? *integer : 0;
}

std::optional<FnState> state(const PropertyDictionary& dictionary, std::string_view key) {
  const auto* integer = findInteger(dictionary, key);
  return integer ? fnStateFromRawValue(*integer) : std::nullopt;
}

void add(PropertyDictionary& dictionary, std::string_view key, std::optional<FnState> mode) {
  if (mode) dictionary.emplace(key, rawValue(*mode));
}

void add(PropertyDictionary& dictionary, std::string_view key,
         const std::optional<std::string>& text) {
  if (text) dictionary.emplace(key, *text);
}

PropertyDictionary dictionaryOf(const States& states) {
  PropertyDictionary dictionary;
  for (const auto& [key, mode] : states) dictionary.emplace(key, rawValue(mode));
  return dictionary;
}

States statesFrom(const PropertyDictionary* dictionary) {
  States states;
  if (!dictionary) return states;
  for (const auto& [key, value] : *dictionary) {
    if (const auto mode = state(*dictionary, key)) states.emplace(key, *mode);
  }
  return states;
}

/// A place in a list as a key, so that the keys stand in the order of the list.
std::string placeKey(std::size_t place) {
  auto digits = std::to_string(place);
  constexpr std::size_t width = 4;
  return std::string(width - std::min(width, digits.size()), '0') + digits;
}

PropertyDictionary dictionaryOf(const Status::Running& running) {
  PropertyDictionary keyboards;
  for (const auto& keyboard : running.keyboards) {
    PropertyDictionary one{{std::string{word::name}, keyboard.name},
                           {std::string{word::isTranslatable}, keyboard.isTranslatable}};
    add(one, word::numbers, keyboard.numbers);
    keyboards.emplace(placeKey(keyboards.size()), std::move(one));
  }
  return {{std::string{word::processIdentifier}, running.processIdentifier},
          {std::string{word::isTrusted}, running.isTrusted},
          {std::string{word::inputMonitoring}, static_cast<int>(running.inputMonitoring)},
          {std::string{word::hasEventTap}, running.hasEventTap},
          {std::string{word::isSessionActive}, running.isSessionActive},
          {std::string{word::seesKeyboards}, running.seesKeyboards},
          {std::string{word::isKeyboardSeized}, running.isKeyboardSeized},
          {std::string{word::keyboards}, std::move(keyboards)}};
}

/// The one of these with this number; the first of them for every other number.
template <typename Enumeration>
Enumeration oneOf(std::initializer_list<Enumeration> all, std::int64_t number) {
  const auto found = std::ranges::find_if(
      all, [number](Enumeration one) { return static_cast<std::int64_t>(one) == number; });
  return found == all.end() ? *all.begin() : *found;
}

InputMonitoringAccess accessFrom(std::int64_t number) {
  return oneOf({InputMonitoringAccess::unknown, InputMonitoringAccess::granted,
                InputMonitoringAccess::denied},
               number);
}

Status::Source sourceFrom(std::int64_t number) {
  return oneOf({Status::Source::unknown, Status::Source::global, Status::Source::override_},
               number);
}

std::map<std::string, std::string, std::less<>> settingsFrom(const PropertyDictionary* dictionary) {
  std::map<std::string, std::string, std::less<>> settings;
  if (!dictionary) return settings;
  for (const auto& [name, value] : *dictionary) {
    if (const auto* text = value.string()) settings.emplace(name, *text);
  }
  return settings;
}

Status::Running runningFrom(const PropertyDictionary& dictionary) {
  Status::Running running{.processIdentifier = number(dictionary, word::processIdentifier),
                          .isTrusted = flag(dictionary, word::isTrusted),
                          .inputMonitoring = accessFrom(number(dictionary, word::inputMonitoring)),
                          .hasEventTap = flag(dictionary, word::hasEventTap),
                          .isSessionActive = flag(dictionary, word::isSessionActive),
                          .seesKeyboards = flag(dictionary, word::seesKeyboards),
                          .isKeyboardSeized = flag(dictionary, word::isKeyboardSeized),
                          .keyboards = {}};
  const auto* keyboards = findDictionary(dictionary, word::keyboards);
  if (!keyboards) return running;
  for (const auto& [place, value] : *keyboards) {
    const auto* keyboard = value.dictionary();
    if (!keyboard) continue;
    running.keyboards.push_back({.name = text(*keyboard, word::name).value_or(""),
                                 .numbers = text(*keyboard, word::numbers),
                                 .isTranslatable = flag(*keyboard, word::isTranslatable)});
  }
  return running;
}

}  // namespace

Status storedStatus(const StoredFnStates& storedFnStates, const KeyboardFnStates& keyboardFnStates,
                    const AppSettings& settings, const NamedSettings& namedSettings) {
  auto stored = storedFnStates.all();
  Status status{
      .mode = {},
      .application = {},
      .global = stored.global,
      .overrides = std::move(stored.overrides),
      .keyboardModes = {},
      .translatesTopRows = settings.isOn(BooleanSetting::applyFnModeToExternalFunctionKeys),
      .settings = {},
      .running = {}};
  for (const auto& [numbers, state] : keyboardFnStates.all()) {
    status.keyboardModes.emplace(numbers.text(), state);
  }
  for (auto& name : NamedSettings::names()) {
    auto value = namedSettings.value(name);
    if (value) status.settings.emplace(std::move(name), *std::move(value));
  }
  return status;
}

PropertyDictionary propertyDictionary(const Status& status) {
  PropertyDictionary dictionary{
      {std::string{word::source}, static_cast<int>(status.source)},
      {std::string{word::overrides}, dictionaryOf(status.overrides)},
      {std::string{word::keyboardModes}, dictionaryOf(status.keyboardModes)},
      {std::string{word::translatesTopRows}, status.translatesTopRows}};
  PropertyDictionary settings;
  for (const auto& [name, value] : status.settings) settings.emplace(name, value);
  dictionary.emplace(word::settings, std::move(settings));
  add(dictionary, word::mode, status.mode);
  add(dictionary, word::global, status.global);
  add(dictionary, word::application, status.application);
  if (status.running) dictionary.emplace(word::running, dictionaryOf(*status.running));
  return dictionary;
}

Status statusFrom(const PropertyDictionary& dictionary) {
  Status status{.mode = state(dictionary, word::mode),
                .source = sourceFrom(number(dictionary, word::source)),
                .application = text(dictionary, word::application),
                .global = state(dictionary, word::global),
                .overrides = statesFrom(findDictionary(dictionary, word::overrides)),
                .keyboardModes = statesFrom(findDictionary(dictionary, word::keyboardModes)),
                .translatesTopRows = flag(dictionary, word::translatesTopRows),
                .settings = settingsFrom(findDictionary(dictionary, word::settings)),
                .running = {}};
  if (const auto* running = findDictionary(dictionary, word::running))
    status.running = runningFrom(*running);
  return status;
}

}  // namespace keyrow
