#include "input/KeyEventHandler.h"

#include <array>
#include <cstddef>

namespace keyrow {

namespace {

/// What flags each modifier sets besides those that left and right have in common, in the
/// order of `FnReplacementModifier` (`NX_DEVICE…KEYMASK`, IOLLEvent.h).
constexpr std::array<std::uint64_t, fnReplacementModifierTable.size()> deviceFlags{
    0x00000001,  // NX_DEVICELCTLKEYMASK
    0x00002000,  // NX_DEVICERCTLKEYMASK
    0x00000020,  // NX_DEVICELALTKEYMASK
    0x00000040,  // NX_DEVICERALTKEYMASK
    0x00000008,  // NX_DEVICELCMDKEYMASK
    0x00000010,  // NX_DEVICERCMDKEYMASK
    0x00000002,  // NX_DEVICELSHIFTKEYMASK
    0x00000004,  // NX_DEVICERSHIFTKEYMASK
};

/// Whether Fn is held, or what stands in for it. With Fn nothing stands in for it.
bool isFnLikeHeld(std::uint64_t flags, std::optional<FnReplacementModifier> replacement) {
  if ((flags & keyEventFlag::secondaryFn) != 0) return true;
  return replacement && (flags & deviceFlags[static_cast<std::size_t>(*replacement)]) != 0;
}

bool isKeyDownOrUp(std::uint32_t type) {
  return type == keyEventType::keyDown || type == keyEventType::keyUp;
}

}  // namespace

TapVerdict KeyEventHandler::handleTappedEvent(std::uint32_t type, const KeyEvent& event) noexcept {
  if (type == keyEventType::tapDisabledByTimeout || type == keyEventType::tapDisabledByUserInput) {
    use_.mainQueue.async(
        [&controller = use_.eventTapController, type] { controller.recoverEventTap(type); });
    return TapVerdict::swallow;
  }
  const auto settings = use_.keySettings.current();

  if (isKeyDownOrUp(type) && isFnLikeHeld(event.flags, settings.fnReplacementModifier)) {
    if (event.keyCode == escapeKeyCode) {
      return performShortcut(type, event, &ModePolicy::clearLocalOverride);
    }
    if (event.keyCode == settings.localToggleShortcutKeyCode) {
      return performShortcut(type, event, &ModePolicy::toggleLocalOverride);
    }
  }
  if (!ExternalKeyboardFunctionRowMapper::isConcernedWith(event.keyCode, settings)) {
    return TapVerdict::pass;
  }
  const auto source = use_.keyboardSourceMonitor.source(event.timestamp);
  return use_.functionRowMapper.translateIfNeeded(type, event, source.get(), settings)
             ? TapVerdict::swallow
             : TapVerdict::pass;
}

TapVerdict KeyEventHandler::performShortcut(std::uint32_t type, const KeyEvent& event,
                                            ModeCommand command) {
  // A key that repeats performs its command again, each time.
  if (type == keyEventType::keyDown) {
    use_.mainQueue.async([&policy = use_.modePolicy, command,
                          source = use_.keyboardSourceMonitor.source(event.timestamp)] {
      (policy.*command)(source.get());
    });
  }
  return TapVerdict::swallow;
}

}  // namespace keyrow
