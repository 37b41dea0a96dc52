#include "reliability/KeyPairs.h"

#include <set>

#include "sim/machine/KeyText.h"

namespace keyrow::reliability {

KeyPairs::KeyPairs(sim::SimulatedMac& mac) : mac_{mac} {
  mac.whenKeyIsDecided = [this](std::uint32_t type, const KeyEvent& event, bool reaches) {
    note(type, event, reaches);
  };
}

KeyPairs::~KeyPairs() {
  mac_.whenKeyIsDecided = [](std::uint32_t, const KeyEvent&, bool) {};
}

void KeyPairs::note(std::uint32_t type, const KeyEvent& event, bool reaches) {
  const bool isPress = type == keyEventType::keyDown && !event.isRepeat;
  const bool isRelease = type == keyEventType::keyUp;
  if (!isPress && !isRelease && !event.isRepeat) return;

  const int ownCount = isRelease ? 0 : 1;
  const auto tapChangeCount = mac_.eventTaps.changeCount() + mac_.secureInputChangeCount();
  if (mac_.keyboardFilters.downCount(event.keyCode) != ownCount) {
    presses_.erase(event.keyCode);
  } else if (isPress) {
    presses_.insert_or_assign(event.keyCode, Press{reaches, tapChangeCount});
  } else if (const auto press = presses_.find(event.keyCode);
             press != presses_.end() && press->second.tapChangeCount == tapChangeCount &&
             press->second.reaches != reaches) {
    problem_ = "the press of " + sim::keyName(event.keyCode) +
               (reaches ? " was swallowed, and its " : " reached an application, and its ") +
               (isRelease ? "release" : "repeat") + (reaches ? " was not" : " did not");
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
