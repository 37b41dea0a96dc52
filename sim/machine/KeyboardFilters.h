#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/machine/KeyText.h"
#include "sim/machine/Scheduler.h"

namespace keyrow::sim {

class SimulatedMac;

/// What the HID service makes of the keys of each keyboard before anybody sees an event: a held
/// key repeats, some keys carry the flag of Fn along, and on Apple's keyboards Fn and the mode
/// make other keys of some. Main thread only.
class KeyboardFilters {
 public:
  explicit KeyboardFilters(SimulatedMac& mac) : mac_{mac} {}

  /// A key goes down. The keyboard of that name sends an input, which arrives so much later
  /// than the key event; one that is not attached sends none. False when the key is down
  /// already.
  bool press(const std::string& keyboard, const NamedKey& key,
             std::chrono::nanoseconds lateness = {});

  /// A key comes up. False when it is not down.
  bool release(const std::string& keyboard, const NamedKey& key,
               std::chrono::nanoseconds lateness = {});

  /// Whatever is down on this keyboard comes up, the key that went down last first.
  void releaseAll(const std::string& keyboard);

  /// The same on all keyboards.
  void releaseAll();

  bool isDown(std::string_view keyboard, std::uint16_t keyCode) const;

  /// Whether any key is down.
  bool isAnythingDown() const { return !down_.empty(); }

  /// What is held on this keyboard, by the names of the keys, in the order in which they went down.
  std::vector<std::string> heldKeys(std::string_view keyboard) const;

  /// What becomes of a key: an event of a key code, or a media key.
  struct Outgoing {
    std::uint16_t keyCode = 0;
    /// Empty for a key code.
    std::string_view mediaKey;
  };

  /// What a key would become if it were pressed now.
  Outgoing outgoing(std::string_view keyboard, std::uint16_t keyCode) const;

  /// Whether this is one of Apple's keyboards.
  bool isApples(std::string_view keyboard) const;

  /// On how many keyboards a key is down that arrives under this key code.
  int downCount(std::uint16_t keyCode) const;

 private:
  struct DownKey {
    std::string keyboard;
    NamedKey key;
    Outgoing outgoing;
    /// The filter has sent its release before the key itself came up.
    bool isReleased = false;
    /// Its next repeat.
    std::optional<Scheduler::Ticket> repeat{};
  };

  std::vector<DownKey>::iterator find(std::string_view keyboard, std::uint16_t keyCode);
  void stopRepeating(DownKey& key);
  void scheduleRepeat(DownKey& key, std::chrono::nanoseconds delay);
  void repeat(const std::string& keyboard, std::uint16_t keyCode);
  void releaseChangedKeys(std::string_view keyboard);
  void sendInput(const std::string& keyboard, std::chrono::nanoseconds lateness);
  void send(std::uint32_t type, const Outgoing& outgoing, bool isRepeat = false);

  SimulatedMac& mac_;
  /// In the order in which they went down.
  std::vector<DownKey> down_;
};

}  // namespace keyrow::sim
