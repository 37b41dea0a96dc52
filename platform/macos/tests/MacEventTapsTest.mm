#include "platform/macos/MacPorts.h"

#import <ApplicationServices/ApplicationServices.h>
#import <Foundation/Foundation.h>
#include <IOKit/hidsystem/IOLLEvent.h>
#include <gtest/gtest.h>

#include <atomic>

#include "core/FnReplacementModifier.h"
#include "platform/KeyEvent.h"
#include "platform/macos/Conversions.h"
#include "platform/macos/tests/Eventually.h"

namespace keyrow::macos {
namespace {

static_assert(keyEventType::keyDown == kCGEventKeyDown);
static_assert(keyEventType::keyUp == kCGEventKeyUp);
static_assert(keyEventType::flagsChanged == kCGEventFlagsChanged);
static_assert(keyEventType::tapDisabledByTimeout == kCGEventTapDisabledByTimeout);
static_assert(keyEventType::tapDisabledByUserInput == kCGEventTapDisabledByUserInput);
static_assert(keyEventFlag::alphaShift == kCGEventFlagMaskAlphaShift);
static_assert(keyEventFlag::shift == kCGEventFlagMaskShift);
static_assert(keyEventFlag::control == kCGEventFlagMaskControl);
static_assert(keyEventFlag::option == kCGEventFlagMaskAlternate);
static_assert(keyEventFlag::command == kCGEventFlagMaskCommand);
static_assert(keyEventFlag::secondaryFn == kCGEventFlagMaskSecondaryFn);
static_assert(deviceFlag(FnReplacementModifier::leftControl) == NX_DEVICELCTLKEYMASK);
static_assert(deviceFlag(FnReplacementModifier::rightControl) == NX_DEVICERCTLKEYMASK);
static_assert(deviceFlag(FnReplacementModifier::leftOption) == NX_DEVICELALTKEYMASK);
static_assert(deviceFlag(FnReplacementModifier::rightOption) == NX_DEVICERALTKEYMASK);
static_assert(deviceFlag(FnReplacementModifier::leftCommand) == NX_DEVICELCMDKEYMASK);
static_assert(deviceFlag(FnReplacementModifier::rightCommand) == NX_DEVICERCMDKEYMASK);
static_assert(deviceFlag(FnReplacementModifier::leftShift) == NX_DEVICELSHIFTKEYMASK);
static_assert(deviceFlag(FnReplacementModifier::rightShift) == NX_DEVICERSHIFTKEYMASK);

TEST(MacEventTapsTest, AThreadHasItsNameAndTheUsersAttention) {
  const std::unique_ptr<EventTaps> taps = makeEventTaps();
  std::string name;
  NSQualityOfService quality = NSQualityOfServiceDefault;
  std::atomic<bool> hasRun = false;
  taps->startThread("app.keyrow.Keyrow.mac-tests.thread", [&] {
    name = utf8Text(NSThread.currentThread.name);
    quality = NSThread.currentThread.qualityOfService;
    hasRun = true;
  });
  ASSERT_TRUE(eventually([&] { return hasRun.load(); }));
  EXPECT_EQ(name, "app.keyrow.Keyrow.mac-tests.thread");
  EXPECT_EQ(quality, NSQualityOfServiceUserInteractive);
}

/// A run loop ends at once when it has no source; this one's never fires.
class IdleSource {
 public:
  IdleSource() { CFRunLoopAddSource(CFRunLoopGetCurrent(), source_, kCFRunLoopCommonModes); }
  IdleSource(const IdleSource&) = delete;
  IdleSource& operator=(const IdleSource&) = delete;
  ~IdleSource() {
    CFRunLoopSourceInvalidate(source_);
    CFRelease(source_);
  }

 private:
  CFRunLoopSourceContext context_{};
  const CFRunLoopSourceRef source_ = CFRunLoopSourceCreate(kCFAllocatorDefault, 0, &context_);
};

TEST(MacEventTapsTest, ARunLoopRunsUntilAnotherThreadStopsIt) {
  const std::unique_ptr<EventTaps> taps = makeEventTaps();
  std::shared_ptr<RunLoop> runLoop;
  std::atomic<bool> isRunning = false;
  std::atomic<bool> hasEnded = false;
  taps->startThread("app.keyrow.Keyrow.mac-tests.runLoop", [&] {
    const IdleSource source;
    runLoop = taps->currentRunLoop();
    isRunning = true;
    runLoop->run();
    hasEnded = true;
  });
  ASSERT_TRUE(eventually([&] { return isRunning.load(); }));
  EXPECT_FALSE(hasEnded);
  // Even if the thread has not got into its run loop yet.
  runLoop->stop();
  EXPECT_TRUE(eventually([&] { return hasEnded.load(); }));
}

}  // namespace
}  // namespace keyrow::macos
