#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "sim/machine/KeyText.h"
#include "sim/scenario/Stage.h"

namespace keyrow::sim {

/// A keyboard is attached.
struct AttachKeyboard {
  std::string name;
  SimulatedKeyboard keyboard;
  /// Whether it gets a registry entry ID where `keyboard` has none.
  bool needsRegistryID = true;
  Outcome play(Stage& stage) const;
};

/// A keyboard is taken away.
struct Unplug {
  std::string name;
  Outcome play(Stage& stage) const;
};

/// Some keys of a keyboard.
struct Keys {
  std::vector<NamedKey> keys;
  /// Absent where no keyboard tells that it was the one.
  std::optional<std::string> keyboard;
  /// How much later than the key events the keyboard's inputs arrive.
  std::chrono::nanoseconds lateness{0};
};

/// Keys are pressed and released.
struct Press {
  Keys keys;
  Outcome play(Stage& stage) const;
};

/// Keys are pressed.
struct HoldDown {
  Keys keys;
  Outcome play(Stage& stage) const;
};

/// Keys that are held are released.
struct Release {
  Keys keys;
  Outcome play(Stage& stage) const;
};

/// A key sends a flags-changed event, though it may be no modifier.
struct ChangeFlags {
  NamedKey key;
  /// Of the modifiers that the event tells of.
  std::uint64_t flags = 0;
  Outcome play(Stage& stage) const;
};

/// Caps Lock is switched on or off.
struct SwitchCapsLock {
  bool isOn;
  /// The keyboard that reports it; absent where none does.
  std::optional<std::string> keyboard;
  Outcome play(Stage& stage) const;
};

/// Key events tell their time in another unit from now on.
struct StampEvents {
  bool inNanoseconds;
  Outcome play(Stage& stage) const;
};

/// macOS disables the event tap.
struct DisableTap {
  /// The event that announces it (`keyEventType`); 0 where nothing does.
  std::uint32_t announcement;
  Outcome play(Stage& stage) const;
};

}  // namespace keyrow::sim
