#pragma once

#include <cstdint>

#include "platform/EventTaps.h"
#include "platform/KeyEvent.h"

namespace keyrow {

/// Decides about the events of one tap, in that tap's worker thread and in no other.
class TappedEventHandler {
 public:
  virtual ~TappedEventHandler() = default;

  /// Called for every event, which waits in the system's path until this returns. `type` is
  /// one of `keyEventType`, or whatever else comes.
  virtual TapVerdict handleTappedEvent(std::uint32_t type, const KeyEvent& event) noexcept = 0;

  /// Events may have passed that the tap has not seen, or none will come any more: what is
  /// known of held keys does not hold any longer.
  virtual void forgetKeys() noexcept = 0;
};

}  // namespace keyrow
