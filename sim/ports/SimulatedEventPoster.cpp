#include "sim/ports/SimulatedEventPoster.h"

#include <array>
#include <string>

namespace keyrow::sim {

namespace {

class Source final : public KeyEventSource {
 public:
  explicit Source(const ProcessContext& context)
      : mac_{context.mac}, handle_{context.mac.openHandles, "CGEventSource", context.processID} {}

  void post(std::uint16_t keyCode, bool isKeyDown, std::uint64_t flags) override {
    mac_.postKeyEvent(isKeyDown ? keyEventType::keyDown : keyEventType::keyUp,
                      {.timestamp = mac_.machAbsoluteTime(), .flags = flags, .keyCode = keyCode});
  }

 private:
  SimulatedMac& mac_;
  const OpenHandle handle_;
};

}  // namespace

std::string mediaKeyName(std::int64_t keyType) {
  switch (keyType) {
    case auxiliaryKey::soundUp:
      return "volume up";
    case auxiliaryKey::soundDown:
      return "volume down";
    case auxiliaryKey::brightnessUp:
      return "brightness up";
    case auxiliaryKey::brightnessDown:
      return "brightness down";
    case auxiliaryKey::mute:
      return "mute";
    case auxiliaryKey::play:
      return "play";
    case auxiliaryKey::next:
      return "next";
    case auxiliaryKey::previous:
      return "previous";
    default:
      return "media key " + std::to_string(keyType);
  }
}

void SimulatedEventPoster::post(const SystemDefinedEvent& event) {
  constexpr std::int64_t pressed = 0xA00;
  constexpr std::int64_t repeated = 0xA01;
  const auto state = event.data1 & 0xFFFF;
  const auto* step = state == pressed ? " down" : state == repeated ? " repeat" : " up";
  context_.mac.timeline.add(TimelineEvent::Kind::key,
                            {quoted(mediaKeyName(event.data1 >> 16) + step)});
  context_.mac.systemDefinedEvents.push_back(event);
}

std::unique_ptr<KeyEventSource> SimulatedEventPoster::createKeyEventSource() {
  if (!context_.mac.call(PortCall::createKeyEventSource)) return nullptr;
  return std::make_unique<Source>(context_);
}

}  // namespace keyrow::sim
