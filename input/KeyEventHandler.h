#pragma once

#include <cstdint>

#include "core/ModePolicy.h"
#include "input/ExternalKeyboardFunctionRowMapper.h"
#include "input/KeySettings.h"
#include "input/KeyboardEventTapController.h"
#include "input/KeyboardSourceMonitor.h"
#include "platform/EventTaps.h"
#include "platform/MainQueue.h"

namespace keyrow {

/// Decides about every key: it may be one of the two shortcuts, or a top-row key to
/// translate; all else passes, and nobody is asked which keyboard it came from. Runs in the
/// event tap's worker thread and only reads. What is to be done it puts on the main queue,
/// and never waits for it.
class KeyEventHandler final : public TappedEventHandler {
 public:
  struct Uses {
    KeySettings& keySettings;
    KeyboardSourceMonitor& keyboardSourceMonitor;
    ExternalKeyboardFunctionRowMapper& functionRowMapper;
    KeyboardEventTapController& eventTapController;
    ModePolicy& modePolicy;
    MainQueue& mainQueue;
  };

  explicit KeyEventHandler(const Uses& uses) : use_{uses} {}

  TapVerdict handleTappedEvent(std::uint32_t type, const KeyEvent& event) noexcept override;

 private:
  using ModeCommand = void (ModePolicy::*)(const KeyboardDeviceSource*);

  /// Performs the command when the key goes down. Both ways of the key are swallowed.
  TapVerdict performShortcut(std::uint32_t type, const KeyEvent& event, ModeCommand command);

  const Uses use_;
};

}  // namespace keyrow
