#include "bench/KeyPath.h"

#include <chrono>

#include "platform/HidManagers.h"

namespace keyrow::sim {

KeyPath::KeyPath(int keyboardCount, int sampleCount) {
  // As many parameters as a real Mac has.
  for (int number = 0; number < 40; ++number) {
    mac.hid.setParameter("HIDParameter number " + std::to_string(number), number);
  }
  // The inputs lie in the past.
  mac.scheduler.advance(std::chrono::hours{1});
  mac.applications.install("com.apple.TextEdit");
  process_.launch();
  mac.applications.activate("com.apple.TextEdit");
  for (int index = 0; index < keyboardCount; ++index) {
    newest_ = std::make_shared<const SimulatedKeyboard>(SimulatedKeyboard{
        .registryID = static_cast<std::uint64_t>(index),
        // Names as long as real ones: they are searched for Apple's.
        .properties = {{"Manufacturer", "Logitech International"},
                       {"Product", "Wireless Mechanical Keyboard with 104 Keys, Unit " +
                                       std::to_string(index)},
                       {"Transport", "USB"},
                       {"VendorID", 0x046D},
                       {"ProductID", 0xC33F}}});
    sendInputs(1);
  }
  if (sampleCount > keyboardCount) sendInputs(sampleCount - keyboardCount);
}

void KeyPath::sendInputs(int count) {
  // A millisecond is 24,000 ticks here; all stay within reach of the event.
  for (int input = 0; input < count; ++input) {
    now_ += 24'000;
    mac.keyboards.deliver({newest_, hidPage::keyboardOrKeypad, now_});
  }
}

}  // namespace keyrow::sim
