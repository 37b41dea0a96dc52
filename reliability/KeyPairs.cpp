#include "reliability/KeyPairs.h"

#include <set>

#include "sim/machine/KeyText.h"

namespace keyrow::reliability {

KeyPairs::KeyPairs(sim::SimulatedMac& mac) : mac_{mac} {
  mac.whenKeyIsDecided = [this](std::uint32_t type, const KeyEvent& event, bool reaches) {
    const bool isRelease = type == keyEventType::keyUp;
    if (type != keyEventType::keyDown && !isRelease) return;
    note({.keyCode = event.keyCode,
          .isPress = !isRelease && !event.isRepeat,
          .isRelease = isRelease,
          .reaches = reaches,
          .downCount = mac_.keyboardFilters.downCount(event.keyCode)});
  };
}

KeyPairs::~KeyPairs() {
  mac_.whenKeyIsDecided = [](std::uint32_t, const KeyEvent&, bool) {};
}

void KeyPairs::note(const Decision& decision) {
  auto& key = keys_[decision.keyCode];
  comparePair(key, decision);
  followDown(key, decision);
}

void KeyPairs::comparePair(Key& key, const Decision& decision) {
  const auto tapChangeCount = mac_.eventTaps.changeCount() + mac_.secureInputChangeCount();
  if (decision.downCount != (decision.isRelease ? 0 : 1)) {
    key.press.reset();
  } else if (decision.isPress) {
    key.press = {decision.reaches, tapChangeCount};
  } else if (key.press && key.press->tapChangeCount == tapChangeCount &&
             key.press->reaches != decision.reaches) {
    problem_ =
        "the press of " + sim::keyName(decision.keyCode) +
        (decision.reaches ? " was swallowed, and its " : " reached an application, and its ") +
        (decision.isRelease ? "release" : "repeat") + (decision.reaches ? " was not" : " did not");
  }
  // A press has one release.
  if (decision.isRelease) key.press.reset();
}

void KeyPairs::followDown(Key& key, const Decision& decision) {
  const auto changeCount = mac_.secureInputChangeCount();
  const bool isSeen = !mac_.isSecureInputOn();
  // What was lost with a Keyrow that was killed in the middle of a key is not this press's.
  if (decision.isPress && decision.downCount == 1) key.isDownInApplication = false;
  if (decision.isPress && isSeen && decision.reaches) key.swallowedAt.reset();
  if (decision.isPress && !decision.reaches && !key.swallowedAt) key.swallowedAt = changeCount;
  if (decision.reaches) key.isDownInApplication = !decision.isRelease;
  if (!decision.isRelease || decision.downCount != 0 || !isSeen) return;

  const bool isHidden = key.swallowedAt && *key.swallowedAt != changeCount;
  key.swallowedAt.reset();
  if (key.isDownInApplication && !isHidden) {
    problem_ = sim::keyName(decision.keyCode) + " stays down in an application";
  }
}

std::string mediaKeysDown(const sim::SimulatedMac& mac) {
  std::set<std::int64_t> down;
  for (const auto& event : mac.systemDefinedEvents) {
    const auto keyType = event.data1 >> 16;
    if ((event.data1 & 0xFF00) == 0xA00) {
      down.insert(keyType);
    } else {
      down.erase(keyType);
    }
  }
  std::string text;
  for (const auto keyType : down) text += (text.empty() ? "" : ", ") + std::to_string(keyType);
  return text;
}

}  // namespace keyrow::reliability
