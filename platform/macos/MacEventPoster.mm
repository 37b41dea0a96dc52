#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

#include "platform/macos/CFRef.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

class MacKeyEventSource final : public KeyEventSource {
 public:
  explicit MacKeyEventSource(CFRef<CGEventSourceRef> source) : source_{std::move(source)} {}

  void post(std::uint16_t keyCode, bool isKeyDown, std::uint64_t flags) override {
    const auto event =
        CFRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(source_.get(), keyCode, isKeyDown));
    if (!event) return;
    CGEventSetFlags(event.get(), flags);
    CGEventPost(kCGHIDEventTap, event.get());
  }

 private:
  const CFRef<CGEventSourceRef> source_;
};

class MacEventPoster final : public EventPoster {
 public:
  void post(const SystemDefinedEvent& event) override {
    NSEvent* const systemDefined =
        [NSEvent otherEventWithType:NSEventTypeSystemDefined
                           location:NSZeroPoint
                      modifierFlags:event.modifierFlags
                          timestamp:NSProcessInfo.processInfo.systemUptime
                       windowNumber:0
                            context:nil
                            subtype:event.subtype
                              data1:event.data1
                              data2:event.data2];
    if (const CGEventRef quartz = systemDefined.CGEvent) CGEventPost(kCGHIDEventTap, quartz);
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
