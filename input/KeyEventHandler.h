#pragma once

#include <array>
#include <cstdint>
#include <limits>

#include "core/ModePolicy.h"
#include "input/ExternalKeyboardFunctionRowMapper.h"
#include "input/KeySettings.h"
#include "input/KeyboardSourceMonitor.h"
#include "input/ShortcutCapture.h"
#include "input/TappedEventHandler.h"
#include "platform/MainQueue.h"

namespace keyrow {

/// Decides about every key: it may be one of the two shortcuts, or a top-row key to
/// translate; all else passes, and nobody is asked which keyboard it came from. How a press
/// was decided its repeats and its release follow, whatever has changed meanwhile. A release
/// that no press in sight accounts for passes: it does no harm, and a key that stays down in an
/// application does. While the settings window waits for a key, every press passes.
///
/// Runs in the event tap's worker thread, and only reads. What is to be done it puts on the
/// main queue, and never waits for it.
class KeyEventHandler final : public TappedEventHandler {
 public:
  struct Uses {
    KeySettings& keySettings;
    KeyboardSourceMonitor& keyboardSourceMonitor;
    ExternalKeyboardFunctionRowMapper& functionRowMapper;
    const ShortcutCapture& shortcutCapture;
    ModePolicy& modePolicy;
    MainQueue& mainQueue;
  };

  explicit KeyEventHandler(const Uses& uses) : use_{uses} {}

  TapVerdict handleTappedEvent(std::uint32_t type, const KeyEvent& event) noexcept override;

  /// Releases the media keys that are down, too.
  void forgetKeys() noexcept override;

 private:
  /// How a key's last press was decided.
  enum class Way : std::uint8_t {
    /// It passed, or it has not been seen.
    passed,
    clearsOverride,
    togglesOverride,
    translated,
    /// Translated to a media key, whose release has not been posted.
    mediaKeyDown,
    /// Swallowed, and so was the one release that goes with it. What comes yet belongs to another
    /// press: that of another keyboard, or one that has not been seen.
    over,
  };

  KeyEvent withTrueFn(const KeyEvent& event) const;

  /// Decides afresh; what a key is translated to has happened then.
  Way decide(std::uint32_t type, const KeyEvent& event);
  // Apart, so that no other key pays for what it needs.
  [[gnu::noinline]] Way decideTopRow(std::uint32_t type, const KeyEvent& event,
                                     const KeySettings::Values& settings);
  TapVerdict handleKey(std::uint32_t type, const KeyEvent& event);
  TapVerdict press(const KeyEvent& event);
  TapVerdict repeat(const KeyEvent& event);
  TapVerdict release(const KeyEvent& event);
  void performShortcut(Way way, const KeyEvent& event);
  void releaseMediaKey(std::uint16_t keyCode);

  const Uses use_;

  /// By key code.
  std::array<Way, std::numeric_limits<std::uint16_t>::max() + 1> ways_{};
  /// The Fn key itself, and not only the flag that some keys bring along.
  bool isFnHeld_ = false;
};

}  // namespace keyrow
