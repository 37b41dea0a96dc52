#include "platform/macos/MacEventPoster.h"

#include <memory>
#include <utility>

#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

NSEvent* nsEvent(const SystemDefinedEvent& event) {
  return [NSEvent otherEventWithType:NSEventTypeSystemDefined
                            location:NSZeroPoint
                       modifierFlags:event.modifierFlags
                           timestamp:NSProcessInfo.processInfo.systemUptime
                        windowNumber:0
                             context:nil
                             subtype:event.subtype
                               data1:event.data1
                               data2:event.data2];
}

CFRef<CGEventRef> keyEvent(CGEventSourceRef source, std::uint16_t keyCode, bool isKeyDown,
                           std::uint64_t flags) {
  auto event = CFRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(source, keyCode, isKeyDown));
  if (event) CGEventSetFlags(event.get(), flags);
  return event;
}

namespace {

class MacKeyEventSource final : public KeyEventSource {
 public:
  explicit MacKeyEventSource(CFRef<CGEventSourceRef> source) : source_{std::move(source)} {}

  void post(std::uint16_t keyCode, bool isKeyDown, std::uint64_t flags) override {
    const auto event = keyEvent(source_.get(), keyCode, isKeyDown, flags);
    if (event) CGEventPost(kCGHIDEventTap, event.get());
  }

 private:
  const CFRef<CGEventSourceRef> source_;
};

class MacEventPoster final : public EventPoster {
 public:
  void post(const SystemDefinedEvent& event) override {
    if (const CGEventRef quartz = nsEvent(event).CGEvent) CGEventPost(kCGHIDEventTap, quartz);
  }

  std::unique_ptr<KeyEventSource> createKeyEventSource() override {
    auto source =
        CFRef<CGEventSourceRef>::adopt(CGEventSourceCreate(kCGEventSourceStateHIDSystemState));
    return source ? std::make_unique<MacKeyEventSource>(std::move(source)) : nullptr;
  }
};

}  // namespace

std::unique_ptr<EventPoster> makeEventPoster() { return std::make_unique<MacEventPoster>(); }

}  // namespace keyrow::macos
