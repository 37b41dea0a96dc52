#include "sim/scenario/ModeLines.h"

#include <algorithm>
#include <array>

#include "core/AppSettings.h"
#include "platform/HidSystem.h"
#include "sim/machine/ModeWords.h"
#include "sim/machine/PropertyText.h"
#include "sim/scenario/Language.h"

namespace keyrow::sim {

std::optional<FnState> ChangeHardware::mode() const {
  const auto* raw = what == What::mode && value ? value->integer() : nullptr;
  return raw ? fnStateFromRawValue(*raw) : std::nullopt;
}

Outcome ChangeInSystemSettings::play(Stage& stage) const {
  stage.mac.changeModeInSystemSettings(mode == FnState::standard);
  return {};
}

Outcome ChangeHardware::play(Stage& stage) const {
  if (what == What::mode) {
    stage.mac.hid.setParameter(hidFKeyModeKey, value);
  } else {
    stage.mac.hid.setParameters(value);
  }
  return {};
}

Outcome ChangePreference::play(Stage& stage) const {
  stage.mac.globalPreferences.setValue(stage.globalDomain(), FnStateController::fnStateDefaultsKey,
                                       value);
  return {};
}

Outcome WriteDefaults::play(Stage& stage) const {
  stage.mac.defaults.setValue(stage.keyrowDomain(), key, value);
  return {};
}

Outcome ManageSetting::play(Stage& stage) const {
  stage.mac.defaults.manage(stage.keyrowDomain(), key, value);
  return {};
}

Outcome AddOverride::play(Stage& stage) const {
  auto& defaults = stage.mac.defaults;
  auto stored = defaults.value(stage.keyrowDomain(), settingsKey::localFnState);
  if (stored && !stored->dictionary()) {
    return unplayable("localFnState is no dictionary, but " + propertyText(stored));
  }
  auto overrides = stored ? *stored->dictionary() : PropertyDictionary{};
  overrides.insert_or_assign(app, rawValue(mode));
  defaults.setValue(stage.keyrowDomain(), settingsKey::localFnState, std::move(overrides));
  return {};
}

namespace {

Action parseSystemSettings(LineReader& line) { return ChangeInSystemSettings{line.mode()}; }

Action parseHardware(LineReader& line) {
  if (!line.atProperty()) {
    return ChangeHardware{.what = ChangeHardware::What::mode, .value = rawValue(line.mode())};
  }
  constexpr std::string_view expected =
      "special, standard, HIDFKeyMode=VALUE or HIDParameters=VALUE";
  const auto property = line.property(expected);
  if (!property.isPlain)
    line.failBefore("KEY= with a value: true, false, a number, a \"quoted text\", {} or none");
  if (property.key == hidFKeyModeKey) return ChangeHardware{.value = property.value};
  if (property.key != hidParametersKey) line.failBefore(expected);
  return ChangeHardware{.what = ChangeHardware::What::parameters, .value = property.value};
}

Action parsePreference(LineReader& line) { return ChangePreference{line.valueOrNone()}; }

/// Takes the key of one of Keyrow's settings.
std::string settingKey(LineReader& line) {
  return std::string{settingsKey::all[line.oneOf(settingsKey::all)]};
}

Action parseDefaults(LineReader& line) {
  constexpr std::array<std::string_view, 3> verbs{"write", "delete", "add"};
  const auto verb = line.oneOf(verbs);
  if (verb == 2) {
    line.require(settingsKey::localFnState);
    auto [app, mode] = line.override_();
    return AddOverride{std::move(app), mode};
  }
  auto key = settingKey(line);
  return WriteDefaults{std::move(key), verb == 0 ? std::optional{line.value()} : std::nullopt};
}

Action parseManaged(LineReader& line) {
  auto key = settingKey(line);
  return ManageSetting{std::move(key), line.valueOrNone()};
}

Expectation expectHardware(LineReader& line) {
  constexpr std::array<std::string_view, 3> modes{"special", "standard", "unreadable"};
  std::string mode{modes[line.oneOf(modes)]};
  if (line.accept("->")) {
    return changePattern(TimelineEvent::Kind::hardware, {}, mode,
                         std::string{modes[line.oneOf(modes)]});
  }
  return [mode](Stage& stage) {
    return expectEqual("the hardware", mode, std::string{stage.mac.hid.modeName()});
  };
}

Expectation expectPreference(LineReader& line) {
  const auto value = line.valueOrNone();
  if (line.accept("->")) {
    return changePattern(TimelineEvent::Kind::preference, {}, propertyText(value),
                         propertyText(line.valueOrNone()));
  }
  return [value](Stage& stage) {
    return expectEqual("the system preference", propertyText(value),
                       propertyText(stage.mac.globalPreferences.value(
                           stage.globalDomain(), FnStateController::fnStateDefaultsKey)));
  };
}

Expectation expectGlobal(LineReader& line) {
  return [expected = line.modeOrNone()](Stage& stage) {
    return expectEqual("the stored global mode", modeWord(expected),
                       modeWord(stage.storedFnStates().global()));
  };
}

Expectation expectOverride(LineReader& line) {
  const auto app = line.bundleIdentifier();
  const auto mode = line.modeOrNone();
  if (line.accept("->")) {
    return changePattern(TimelineEvent::Kind::override_, {app}, modeWord(mode),
                         modeWord(line.modeOrNone()));
  }
  return [app, mode](Stage& stage) {
    return expectEqual("the override of " + app, modeWord(mode),
                       modeWord(stage.storedFnStates().local(app)));
  };
}

Expectation expectScope(LineReader& line) {
  constexpr std::array<std::string_view, 2> scopes{"global", "local"};
  return [expected = std::string{scopes[line.oneOf(scopes)]}](Stage& stage) {
    if (!stage.process()) return Stage::keyrowMissing("the scope to be " + expected);
    const bool local = stage.process()->keyrow().modePolicy().isLocalScopeActive();
    return expectEqual("the scope", expected, local ? "local" : "global");
  };
}

Expectation expectDefaults(LineReader& line) {
  const auto key = settingKey(line);
  const auto value = line.valueOrNone();
  if (line.accept("->")) {
    return changePattern(TimelineEvent::Kind::defaults, {key}, propertyText(value),
                         propertyText(line.valueOrNone()));
  }
  return [key, value](Stage& stage) {
    return expectEqual("the setting " + key, propertyText(value),
                       propertyText(stage.mac.defaults.value(stage.keyrowDomain(), key)));
  };
}

constexpr std::array<ActionWord, 5> actions{{
    {"system-settings", "system-settings special|standard",
     "The user changes the mode in System Settings, behind Keyrow's back; hardware and preference "
     "follow.",
     "system-settings standard", parseSystemSettings},
    {"hardware", "hardware special|standard|KEY=VALUE",
     "Something else changes the mode in the hardware alone, or puts a raw value there: "
     "HIDFKeyMode=VALUE or HIDParameters=VALUE, where none removes it.",
     "hardware HIDFKeyMode=2", parseHardware},
    {"preference", "preference VALUE|none",
     "Something else sets or removes the system preference com.apple.keyboard.fnState.",
     "preference true", parsePreference},
    {"defaults",
     "defaults write KEY VALUE | defaults delete KEY | defaults add localFnState APP=MODE",
     "Somebody writes one of Keyrow's settings, with the tool of that name: just this value, "
     "deletes it, or adds one override to those that are stored.",
     "defaults add localFnState com.apple.TextEdit=standard", parseDefaults},
    {"managed", "managed KEY VALUE|none",
     "An administrator manages one of Keyrow's settings with a profile: nobody can change it, "
     "until "
     "the profile is gone.",
     "managed globalFnState 1", parseManaged},
}};

constexpr std::array<ExpectationWord, 6> expectations{{
    {"hardware", "expect hardware MODE|unreadable [-> MODE|unreadable]",
     "The mode that the hardware holds, or a change of it.", "expect hardware special -> standard",
     expectHardware},
    {"preference", "expect preference VALUE|none [-> VALUE|none]",
     "The system preference com.apple.keyboard.fnState, or a change of it; true means standard.",
     "expect preference true", expectPreference},
    {"defaults", "expect defaults KEY VALUE|none [-> VALUE|none]",
     "A stored setting as it is, or a change of it.", "expect defaults globalFnState 0 -> 1",
     expectDefaults},
    {"override", "expect override APP MODE|none [-> MODE|none]",
     "The stored override of an application, or a change of it.",
     "expect override com.apple.TextEdit none -> standard", expectOverride},
    {"global", "expect global MODE|none", "The stored global mode.", "expect global special",
     expectGlobal},
    {"scope", "expect scope global|local",
     "Whether the mode in force is the global mode or an override.", "expect scope local",
     expectScope},
}};

}  // namespace

LanguagePart modeLines() { return {actions, expectations}; }

}  // namespace keyrow::sim
