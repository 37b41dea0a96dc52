#include "platform/macos/MacEventPoster.h"

#import <AppKit/AppKit.h>

#include <utility>

#include "platform/macos/CFRef.h"

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

}  // namespace

void MacEventPoster::post(const SystemDefinedEvent& event) {
  NSEvent* const systemDefined = [NSEvent otherEventWithType:NSEventTypeSystemDefined
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

std::unique_ptr<KeyEventSource> MacEventPoster::createKeyEventSource() {
  auto source =
      CFRef<CGEventSourceRef>::adopt(CGEventSourceCreate(kCGEventSourceStateHIDSystemState));
  return source ? std::make_unique<MacKeyEventSource>(std::move(source)) : nullptr;
}

}  // namespace keyrow::macos
