#include "input/KeyEventHandler.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <variant>

#include "platform/VirtualKeys.h"

namespace keyrow {

namespace {

/// The keys whose events carry the flag of Fn whether it is held or not: F1 to F20, the arrows,
/// Home, End, Page Up, Page Down, Forward Delete and Help, and those of an Apple top row in the
/// special mode (`kVK_F1`…, HIToolbox Events.h).
constexpr auto bringsFnAlong = [] {
  constexpr auto codes = std::to_array<std::uint8_t>(
      {64,  79,  80,  90,  96,  97,  98,  99,  100, 101, 103, 105, 106, 107, 109, 111, 113, 114,
       115, 116, 117, 118, 119, 120, 121, 122, 123, 124, 125, 126, 131, 160, 176, 177, 178});
  std::array<bool, 256> brings{};
  for (const auto code : codes) brings[code] = true;
  return brings;
}();

bool doesBringFnAlong(std::uint16_t keyCode) {
  return keyCode < bringsFnAlong.size() && bringsFnAlong[keyCode];
}

}  // namespace

TapVerdict KeyEventHandler::handleTappedEvent(std::uint32_t type, const KeyEvent& event) noexcept {
  if (doesBringFnAlong(event.keyCode)) return handleKey(type, withTrueFn(event));
  // Where it came up unseen, in secure input, the next ordinary key tells.
  const bool hasFlag = (event.flags & keyEventFlag::secondaryFn) != 0;
  const bool isFnKey = type == keyEventType::flagsChanged && event.keyCode == virtualKey::function;
  isFnHeld_ = hasFlag && (isFnHeld_ || isFnKey);
  return handleKey(type, event);
}

TapVerdict KeyEventHandler::handleKey(std::uint32_t type, const KeyEvent& event) {
  if (type == keyEventType::keyDown) return event.isRepeat ? repeat(event) : press(event);
  if (type == keyEventType::keyUp) return release(event);
  decide(type, event);
  return TapVerdict::pass;
}

void KeyEventHandler::forgetKeys() noexcept {
  for (std::size_t keyCode = 0; keyCode < ways_.size(); ++keyCode) {
    if (ways_[keyCode] == Way::mediaKeyDown) releaseMediaKey(static_cast<std::uint16_t>(keyCode));
  }
  ways_.fill(Way::passed);
  isFnHeld_ = false;
}

KeyEvent KeyEventHandler::withTrueFn(const KeyEvent& event) const {
  auto truth = event;
  truth.flags &= ~keyEventFlag::secondaryFn;
  if (isFnHeld_) truth.flags |= keyEventFlag::secondaryFn;
  return truth;
}

KeyEventHandler::Way KeyEventHandler::decide(std::uint32_t type, const KeyEvent& event) {
  const auto settings = use_.keySettings.current();
  if (type == keyEventType::keyDown && (event.flags & settings.fnLikeFlags) != 0) {
    if (event.keyCode == escapeKeyCode) return Way::clearsOverride;
    if (event.keyCode == settings.localToggleShortcutKeyCode) return Way::togglesOverride;
  }
  if (!ExternalKeyboardFunctionRowMapper::isConcernedWith(event.keyCode, settings)) {
    return Way::passed;
  }
  return decideTopRow(type, event, settings);
}

KeyEventHandler::Way KeyEventHandler::decideTopRow(std::uint32_t type, const KeyEvent& event,
                                                   const KeySettings::Values& settings) {
  const auto source = use_.keyboardSourceMonitor.source(event.timestamp);
  return use_.functionRowMapper.translateIfNeeded(type, event, source.get(), settings)
             ? Way::translated
             : Way::passed;
}

TapVerdict KeyEventHandler::press(const KeyEvent& event) {
  auto& way = ways_[event.keyCode];
  if (way == Way::mediaKeyDown) releaseMediaKey(event.keyCode);
  way = use_.shortcutCapture.isRunning() ? Way::passed : decide(keyEventType::keyDown, event);
  if (way == Way::passed) return TapVerdict::pass;
  if (way == Way::translated) {
    const auto& action = *ExternalKeyboardFunctionRowMapper::action(event.keyCode);
    if (std::holds_alternative<AuxiliaryAction>(action)) way = Way::mediaKeyDown;
  } else {
    performShortcut(way, event);
  }
  return TapVerdict::swallow;
}

TapVerdict KeyEventHandler::repeat(const KeyEvent& event) {
  switch (const auto way = ways_[event.keyCode]) {
    case Way::passed:
      return TapVerdict::pass;
    case Way::clearsOverride:
    case Way::togglesOverride:
      if ((event.flags & use_.keySettings.current().fnLikeFlags) != 0) {
        performShortcut(way, event);
      }
      return TapVerdict::swallow;
    case Way::mediaKeyDown:
      use_.functionRowMapper.perform(*ExternalKeyboardFunctionRowMapper::action(event.keyCode),
                                     KeyStep::repeat);
      return TapVerdict::swallow;
    case Way::translated:
    case Way::over:
      break;
  }
  return TapVerdict::swallow;
}

TapVerdict KeyEventHandler::release(const KeyEvent& event) {
  auto& way = ways_[event.keyCode];
  if (way == Way::passed || way == Way::over) return TapVerdict::pass;
  if (way == Way::mediaKeyDown) releaseMediaKey(event.keyCode);
  way = Way::over;
  return TapVerdict::swallow;
}

void KeyEventHandler::performShortcut(Way way, const KeyEvent& event) {
  const auto command = way == Way::clearsOverride ? &ModePolicy::clearLocalOverride
                                                  : &ModePolicy::toggleLocalOverride;
  use_.mainQueue.async([&policy = use_.modePolicy, command,
                        source = use_.keyboardSourceMonitor.source(event.timestamp)] {
    (policy.*command)(source.get());
  });
}

void KeyEventHandler::releaseMediaKey(std::uint16_t keyCode) {
  use_.functionRowMapper.perform(*ExternalKeyboardFunctionRowMapper::action(keyCode),
                                 KeyStep::release);
}

}  // namespace keyrow
