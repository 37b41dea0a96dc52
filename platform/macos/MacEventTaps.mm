#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>

#include <memory>
#include <utility>

#include "platform/macos/CFRef.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/MacPorts.h"

namespace keyrow::macos {

namespace {

/// The callback of every tap; `userInfo` is its `EventTapCallback`.
CGEventRef handleEvent(CGEventTapProxy /*proxy*/, CGEventType type, CGEventRef event,
                       void* userInfo) {
  // Of the pseudo events nothing is asked: they may come without an event.
  KeyEvent converted;
  if (type == kCGEventKeyDown || type == kCGEventKeyUp || type == kCGEventFlagsChanged) {
    converted = {.timestamp = CGEventGetTimestamp(event),
                 .flags = CGEventGetFlags(event),
                 .keyCode = static_cast<std::uint16_t>(
                     CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode)),
                 .isRepeat = CGEventGetIntegerValueField(event, kCGKeyboardEventAutorepeat) != 0};
  }
  // The worker's run loop drains no pool.
  @autoreleasepool {
    auto& callback = *static_cast<EventTapCallback*>(userInfo);
    return callback.tapReceived(type, converted) == TapVerdict::pass ? event : nullptr;
  }
}

class MacEventTap final : public EventTap {
 public:
  explicit MacEventTap(CFRef<CFMachPortRef> port) : port_{std::move(port)} {}

  void setEnabled(bool enabled) override { CGEventTapEnable(port_.get(), enabled); }
  bool isEnabled() override { return CGEventTapIsEnabled(port_.get()); }
  void invalidate() override { CFMachPortInvalidate(port_.get()); }

  CFMachPortRef port() const { return port_.get(); }

 private:
  const CFRef<CFMachPortRef> port_;
};

class MacRunLoopSource final : public RunLoopSource {
 public:
  explicit MacRunLoopSource(CFRef<CFRunLoopSourceRef> source) : source_{std::move(source)} {}

  CFRunLoopSourceRef source() const { return source_.get(); }

 private:
  const CFRef<CFRunLoopSourceRef> source_;
};

/// The sources that it is given are the `MacRunLoopSource` that its port makes.
CFRunLoopSourceRef sourceOf(RunLoopSource& source) {
  return static_cast<MacRunLoopSource&>(source).source();
}

class MacRunLoop final : public RunLoop {
 public:
  explicit MacRunLoop(CFRef<CFRunLoopRef> runLoop) : runLoop_{std::move(runLoop)} {}

  void addSource(RunLoopSource& source) override {
    CFRunLoopAddSource(runLoop_.get(), sourceOf(source), kCFRunLoopCommonModes);
  }
  void removeSource(RunLoopSource& source) override {
    CFRunLoopRemoveSource(runLoop_.get(), sourceOf(source), kCFRunLoopCommonModes);
  }
  void run() override { CFRunLoopRun(); }
  void perform(std::function<void()> work) override {
    CFRunLoopPerformBlock(runLoop_.get(), kCFRunLoopCommonModes, ^{
      work();
    });
    CFRunLoopWakeUp(runLoop_.get());
  }
  void stop() override {
    perform([] { CFRunLoopStop(CFRunLoopGetCurrent()); });
  }

 private:
  const CFRef<CFRunLoopRef> runLoop_;
};

class MacEventTaps final : public EventTaps {
 public:
  std::shared_ptr<EventTap> createTap(std::uint64_t eventsOfInterest,
                                      EventTapCallback& callback) override {
    auto port = CFRef<CFMachPortRef>::adopt(
        CGEventTapCreate(kCGHIDEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault,
                         eventsOfInterest, handleEvent, &callback));
    return port ? std::make_shared<MacEventTap>(std::move(port)) : nullptr;
  }

  std::shared_ptr<RunLoopSource> createRunLoopSource(EventTap& tap) override {
    auto source = CFRef<CFRunLoopSourceRef>::adopt(CFMachPortCreateRunLoopSource(
        kCFAllocatorDefault, static_cast<MacEventTap&>(tap).port(), /*order=*/0));
    return source ? std::make_shared<MacRunLoopSource>(std::move(source)) : nullptr;
  }

  std::shared_ptr<RunLoop> currentRunLoop() override {
    return std::make_shared<MacRunLoop>(CFRef<CFRunLoopRef>::retain(CFRunLoopGetCurrent()));
  }

  void startThread(std::string_view name, std::function<void()> body) override {
    NSThread* const thread = [[NSThread alloc] initWithBlock:^{
      @autoreleasepool {
        body();
      }
    }];
    thread.name = nsString(name);
    thread.qualityOfService = NSQualityOfServiceUserInteractive;
    [thread start];
  }
};

}  // namespace

std::unique_ptr<EventTaps> makeEventTaps() { return std::make_unique<MacEventTaps>(); }

}  // namespace keyrow::macos
