#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "sim/machine/SimulatedMac.h"

namespace keyrow::reliability {

/// Watches that a key's repeats and its release go the way of its press: both reach an
/// application, or neither does. That holds where the taps and what they may see stayed as they
/// were, and where the key was down on one keyboard only.
class KeyPairs {
 public:
  explicit KeyPairs(sim::SimulatedMac& mac);
  ~KeyPairs();
  KeyPairs(const KeyPairs&) = delete;
  KeyPairs& operator=(const KeyPairs&) = delete;

  /// What has gone wrong since this was asked the last time; empty when nothing has.
  std::string takeProblem() { return std::exchange(problem_, {}); }

 private:
  struct Press {
    bool reaches;
    std::uint64_t tapChangeCount;
  };

  void note(std::uint32_t type, const KeyEvent& event, bool reaches);

  sim::SimulatedMac& mac_;
  /// The last press of each key, by key code, where it can be told what has to follow.
  std::map<std::uint16_t, Press> presses_;
  std::string problem_;
};

/// The media keys that Keyrow has pressed and not released, as the number of their key type;
/// empty when there are none.
std::string mediaKeysDown(const sim::SimulatedMac& mac);

}  // namespace keyrow::reliability
