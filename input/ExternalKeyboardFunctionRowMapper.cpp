#include "input/ExternalKeyboardFunctionRowMapper.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>
#include <vector>

#include "platform/VirtualKeys.h"

namespace keyrow {

namespace {

struct TopRowKey {
  std::uint16_t keyCode;
  std::string_view name;
  /// Absent for the keys that have no media mapping that is public.
  std::optional<TranslatedAction> action;
};

constexpr std::array<TopRowKey, 12> topRow{{
    {virtualKey::f1, "F1", AuxiliaryAction{auxiliaryKey::brightnessDown}},
    {virtualKey::f2, "F2", AuxiliaryAction{auxiliaryKey::brightnessUp}},
    {virtualKey::f3, "F3",
     OpenApplicationAction{"/System/Applications/Mission Control.app", "Mission Control"}},
    {virtualKey::f4, "F4",
     KeyStrokeAction{virtualKey::space, keyEventFlag::command, "Spotlight Shortcut"}},
    {virtualKey::f5, "F5", std::nullopt},
    {virtualKey::f6, "F6", std::nullopt},
    {virtualKey::f7, "F7", AuxiliaryAction{auxiliaryKey::previous}},
    {virtualKey::f8, "F8", AuxiliaryAction{auxiliaryKey::play}},
    {virtualKey::f9, "F9", AuxiliaryAction{auxiliaryKey::next}},
    {virtualKey::f10, "F10", AuxiliaryAction{auxiliaryKey::mute}},
    {virtualKey::f11, "F11", AuxiliaryAction{auxiliaryKey::soundDown}},
    {virtualKey::f12, "F12", AuxiliaryAction{auxiliaryKey::soundUp}},
}};

/// For each key code up to the largest in the top row, its place there; the length of the
/// top row for all others.
constexpr std::uint16_t largestTopRowKeyCode = virtualKey::f1;
constexpr auto topRowPlaces = [] {
  std::array<std::uint8_t, largestTopRowKeyCode + 1> places{};
  places.fill(topRow.size());
  for (std::size_t place = 0; place < topRow.size(); ++place) {
    places[topRow[place].keyCode] = static_cast<std::uint8_t>(place);
  }
  return places;
}();

const TopRowKey* findTopRowKey(std::uint16_t keyCode) {
  if (keyCode > largestTopRowKeyCode) return nullptr;
  const auto place = topRowPlaces[keyCode];
  return place < topRow.size() ? &topRow[place] : nullptr;
}

struct ModifierKey {
  std::uint64_t flag;
  std::uint16_t keyCode;
};
/// In the order in which they are pressed.
constexpr std::array<ModifierKey, 4> modifierKeys{{
    {keyEventFlag::control, virtualKey::control},
    {keyEventFlag::option, virtualKey::option},
    {keyEventFlag::shift, virtualKey::shift},
    {keyEventFlag::command, virtualKey::command},
}};

/// Whether a media key acts again with each repeat, as volume and brightness do.
constexpr bool actsAgain(std::int32_t keyType) {
  return keyType >= auxiliaryKey::soundUp && keyType <= auxiliaryKey::brightnessDown;
}

}  // namespace

bool ExternalKeyboardFunctionRowMapper::isConcernedWith(std::uint16_t keyCode,
                                                        const KeySettings::Values& settings) {
  if (!findTopRowKey(keyCode)) return false;
  return settings.applyFnModeToExternalFunctionKeys || settings.enhancedDiagnosticsEnabled;
}

std::string TranslationEvaluation::reason() const {
  const auto modeReason = [this](std::string_view verdict, FnState mode) {
    return std::string{verdict} + (isByKeyboardMode ? " keyboardMode=" : " mode=") +
           std::to_string(rawValue(mode)) + " fnPressed=" + (isFnPressed ? "true" : "false");
  };
  switch (why) {
    case TranslationReason::settingDisabled:
      return "setting-disabled";
    case TranslationReason::unsupportedEventType:
      return "unsupported-event-type=" + std::to_string(eventType);
    case TranslationReason::sourceUnavailable:
      return "source-unavailable";
    case TranslationReason::sourceNotEligible:
      return "source-not-eligible";
    case TranslationReason::noPublicMediaMapping:
      return "no-public-media-mapping";
    case TranslationReason::fnStateUnavailable:
      return "fn-state-unavailable";
    case TranslationReason::translate:
      return modeReason("translate", FnState::special);
    case TranslationReason::passthrough:
      return modeReason("passthrough", FnState::standard);
  }
  return {};
}

const TranslatedAction* ExternalKeyboardFunctionRowMapper::action(std::uint16_t keyCode) {
  const auto* key = findTopRowKey(keyCode);
  return key && key->action ? &*key->action : nullptr;
}

std::optional<TranslationEvaluation> ExternalKeyboardFunctionRowMapper::decide(
    std::uint32_t eventType, const KeyEvent& event, const KeyboardDeviceSource* source,
    const KeySettings::Values& settings, const TopRowModes& modes) {
  const auto* key = findTopRowKey(event.keyCode);
  if (!key) return std::nullopt;

  TranslationEvaluation evaluation{.functionKeyName = key->name,
                                   .eventType = eventType,
                                   .isFnPressed = (event.flags & keyEventFlag::secondaryFn) != 0};
  const auto pass = [&evaluation](TranslationReason why) {
    evaluation.why = why;
    return evaluation;
  };
  if (!settings.applyFnModeToExternalFunctionKeys) return pass(TranslationReason::settingDisabled);
  if (eventType != keyEventType::keyDown && eventType != keyEventType::keyUp) {
    return pass(TranslationReason::unsupportedEventType);
  }
  if (!source) return pass(TranslationReason::sourceUnavailable);
  if (!source->mediaTranslationEligible) return pass(TranslationReason::sourceNotEligible);
  if (!key->action) return pass(TranslationReason::noPublicMediaMapping);

  evaluation.action = &*key->action;
  evaluation.isByKeyboardMode = modes.keyboard.has_value();
  const auto mode = modes.keyboard ? modes.keyboard : modes.hardware;
  if (!mode) return pass(TranslationReason::fnStateUnavailable);
  if (*mode == FnState::standard) return pass(TranslationReason::passthrough);
  evaluation.shouldTranslate = true;
  evaluation.why = TranslationReason::translate;
  return evaluation;
}

std::optional<TranslationEvaluation> ExternalKeyboardFunctionRowMapper::evaluate(
    std::uint32_t eventType, const KeyEvent& event, const KeyboardDeviceSource* source,
    const KeySettings::Values& settings) {
  const auto withoutMode = decide(eventType, event, source, settings, {});
  if (!withoutMode || withoutMode->why != TranslationReason::fnStateUnavailable) {
    return withoutMode;
  }
  return decide(eventType, event, source, settings, modesFor(*source));
}

TopRowModes ExternalKeyboardFunctionRowMapper::modesFor(const KeyboardDeviceSource& source) {
  if (const auto own = use_.keyboardModes.of(source)) return {.keyboard = own};
  const auto mode = use_.fnStateController.readFnState();
  return {.hardware = mode ? std::optional{*mode} : std::nullopt};
}

bool ExternalKeyboardFunctionRowMapper::translateIfNeeded(std::uint32_t eventType,
                                                          const KeyEvent& event,
                                                          const KeyboardDeviceSource* source,
                                                          const KeySettings::Values& settings) {
  const auto evaluation = evaluate(eventType, event, source, settings);
  if (!evaluation) return false;
  if (settings.enhancedDiagnosticsEnabled) {
    use_.inputLog.debug("Evaluated " + std::string{evaluation->functionKeyName} + ": " +
                        evaluation->reason() +
                        (source ? " source=" + source->inputSourceLabel(true) : std::string{}));
  }
  if (!evaluation->shouldTranslate) return false;
  perform(*evaluation->action,
          eventType == keyEventType::keyDown ? KeyStep::press : KeyStep::release);
  return true;
}

void ExternalKeyboardFunctionRowMapper::perform(const TranslatedAction& action, KeyStep step) {
  if (const auto* auxiliary = std::get_if<AuxiliaryAction>(&action)) {
    if (step != KeyStep::repeat || actsAgain(auxiliary->keyType)) {
      postAuxiliaryKey(auxiliary->keyType, step);
    }
    return;
  }
  // Everything else has happened when the key repeats or comes up.
  if (step != KeyStep::press) return;
  if (const auto* application = std::get_if<OpenApplicationAction>(&action)) {
    openApplication(application->path);
  } else if (const auto* url = std::get_if<OpenURLAction>(&action)) {
    openURL(url->url, url->fallbackApp);
  } else {
    const auto& stroke = std::get<KeyStrokeAction>(action);
    postKeyStroke(stroke.keyCode, stroke.flags);
  }
}

void ExternalKeyboardFunctionRowMapper::postAuxiliaryKey(std::int32_t keyType, KeyStep step) {
  const auto type = step == KeyStep::release ? keyEventType::keyUp : keyEventType::keyDown;
  const std::int64_t state = std::int64_t{type} << 8;
  const std::int64_t repeatBit = step == KeyStep::repeat ? 1 : 0;
  {
    const std::scoped_lock guard{waitingLock_};
    waitingKeys_.push_back({.modifierFlags = static_cast<std::uint64_t>(state),
                            .subtype = auxiliaryControlButtons,
                            .data1 = std::int64_t{keyType} << 16 | state | repeatBit,
                            .data2 = step == KeyStep::release ? 0 : -1});
  }
  use_.mainQueue.async([this] { postWaitingKeys(); });
}

void ExternalKeyboardFunctionRowMapper::postWaitingKeys() {
  std::vector<SystemDefinedEvent> waiting;
  {
    const std::scoped_lock guard{waitingLock_};
    waiting.swap(waitingKeys_);
  }
  for (const auto& event : waiting) use_.eventPoster.post(event);
}

void ExternalKeyboardFunctionRowMapper::openApplication(std::string_view path) {
  use_.mainQueue.async(
      [&workspace = use_.workspace, path = std::string{path}] { workspace.openApplication(path); });
}

void ExternalKeyboardFunctionRowMapper::openURL(std::string_view url,
                                                std::optional<std::string_view> fallbackApp) {
  use_.mainQueue.async(
      [&workspace = use_.workspace, url = std::string{url},
       fallback = fallbackApp ? std::optional<std::string>{*fallbackApp} : std::nullopt] {
        if (!workspace.openURL(url) && fallback) workspace.openApplication(*fallback);
      });
}

void ExternalKeyboardFunctionRowMapper::postKeyStroke(std::uint16_t keyCode, std::uint64_t flags) {
  use_.mainQueue.async([&poster = use_.eventPoster, keyCode, flags] {
    const auto source = poster.createKeyEventSource();
    if (!source) return;
    std::vector<ModifierKey> held;
    std::ranges::copy_if(modifierKeys, std::back_inserter(held),
                         [flags](const ModifierKey& key) { return (flags & key.flag) != 0; });
    std::uint64_t running = 0;
    for (const auto& key : held) {
      running |= key.flag;
      source->post(key.keyCode, true, running);
    }
    source->post(keyCode, true, running);
    source->post(keyCode, false, running);
    std::ranges::reverse(held);
    for (const auto& key : held) {
      running &= ~key.flag;
      source->post(key.keyCode, false, running);
    }
  });
}

}  // namespace keyrow
