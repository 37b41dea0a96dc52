#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>

#include "sim/machine/SimulatedMac.h"

namespace keyrow::reliability {

/// Watches two promises about keys.
///
/// A key's repeats and its release go the way of its press: both reach an application, or neither
/// does. That holds where the taps and what they may see stayed as they were, and where the key was
/// down on one keyboard only.
///
/// A key that is up on every keyboard is down in no application. That holds whatever becomes of the
/// taps, but not where secure input has come or gone since a press that was swallowed: what it hid
/// of that key nobody can know.
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

  struct Key {
    /// The last press, where it can be told what has to follow.
    std::optional<Press> press;
    /// Whether an application has got its press, or a repeat, and no release since.
    bool isDownInApplication = false;
    /// How often secure input had changed at the first press that was swallowed and may not be
    /// over.
    std::optional<std::uint64_t> swallowedAt;
  };

  /// One key event, and on how many keyboards the key is down with it.
  struct Decision {
    std::uint16_t keyCode;
    bool isPress;
    bool isRelease;
    bool reaches;
    int downCount;
  };

  void note(const Decision& decision);
  void comparePair(Key& key, const Decision& decision);
  void followDown(Key& key, const Decision& decision);

  sim::SimulatedMac& mac_;
  /// By key code.
  std::map<std::uint16_t, Key> keys_;
  std::string problem_;
};

/// The media keys that Keyrow has pressed and not released, as the number of their key type;
/// empty when there are none.
std::string mediaKeysDown(const sim::SimulatedMac& mac);

}  // namespace keyrow::reliability
