#include "input/KeyboardEventTapController.h"

#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;
constexpr auto timeout = keyEventType::tapDisabledByTimeout;

class KeyboardEventTapControllerTest : public SimulatedMacTest {
 protected:
  KeyboardEventTapController& controller() { return keyrow().eventTapController(); }

  int handles(const std::string& kind) const { return mac.openHandles.count(kind); }

  void expectOne() {
    EXPECT_EQ(mac.eventTaps.enabledCount(), 1);
    EXPECT_EQ(handles("EventTap"), 1);
    EXPECT_EQ(handles("RunLoopSource"), 1);
    EXPECT_EQ(handles("thread"), 1);
  }

  /// That all is gone, as soon as the worker has got to its end.
  void expectNone() {
    EXPECT_EQ(mac.eventTaps.enabledCount(), 0);
    process->simulatedPlatform().eventTaps.endThreads();
    EXPECT_EQ(handles("EventTap") + handles("RunLoopSource") + handles("thread"), 0);
  }
};

TEST_F(KeyboardEventTapControllerTest, StartsOneTapWithOneWorker) {
  mac.trace.start();
  EXPECT_TRUE(controller().startEventTap());
  EXPECT_THAT(mac.trace.take(),
              ElementsAre("create-event-tap", "create-run-loop-source",
                          "start thread app.keyrow.Keyrow.KeyboardEventTap", "enable-event-tap"));
  expectOne();
  EXPECT_THAT(logLines(), ElementsAre());
}

TEST_F(KeyboardEventTapControllerTest, StartingAgainOnlyEnables) {
  controller().startEventTap();
  mac.eventTaps.disableAll(0);
  mac.trace.start();
  EXPECT_TRUE(controller().startEventTap());
  EXPECT_THAT(mac.trace.take(), ElementsAre("enable-event-tap"));
  expectOne();
}

TEST_F(KeyboardEventTapControllerTest, ATapThatIsRefusedLeavesNothing) {
  for (const auto call : {PortCall::createEventTap, PortCall::createRunLoopSource}) {
    mac.faults.fail(call, 1);
    EXPECT_FALSE(controller().startEventTap());
    EXPECT_EQ(handles("EventTap") + handles("RunLoopSource") + handles("thread"), 0);
    EXPECT_EQ(mac.eventTaps.enabledCount(), 0);
  }
  EXPECT_THAT(logLines(), ElementsAre());
  EXPECT_TRUE(controller().startEventTap());
}

TEST_F(KeyboardEventTapControllerTest, StoppingEndsTapAndWorkerAndStoppingAgainDoesNothing) {
  controller().startEventTap();
  mac.trace.start();
  controller().stopEventTap();
  EXPECT_THAT(mac.trace.take(), ElementsAre("disable event tap", "invalidate event tap"));
  controller().stopEventTap();
  EXPECT_THAT(mac.trace.take(), ElementsAre());
  expectNone();
}

TEST_F(KeyboardEventTapControllerTest, StartsAnewAfterItWasStopped) {
  controller().startEventTap();
  controller().stopEventTap();
  EXPECT_TRUE(controller().startEventTap());
  EXPECT_EQ(mac.eventTaps.enabledCount(), 1);
}

TEST_F(KeyboardEventTapControllerTest, RecoversByEnablingTheSameTap) {
  controller().startEventTap();
  for (const auto& [type, reason] :
       std::vector<std::pair<std::uint32_t, std::string>>{{timeout, "timeout"},
                                                          {0xFFFFFFFF, "user input"},
                                                          {5, "event type 5"},
                                                          {0, "event type 0"}}) {
    mac.eventTaps.disableAll(0);
    mac.trace.start();
    controller().recoverEventTap(type);
    EXPECT_THAT(mac.trace.take(), ElementsAre("enable-event-tap"));
    EXPECT_EQ(logLines().back(),
              "input notice: Re-enabled the keyboard event tap after " + reason + ".");
    expectOne();
  }
}

TEST_F(KeyboardEventTapControllerTest, AnAnnouncementIsAnsweredFromTheMainQueue) {
  controller().startEventTap();
  for (const auto& [type, reason] :
       {std::pair{timeout, "timeout"}, {keyEventType::tapDisabledByUserInput, "user input"}}) {
    mac.eventTaps.disableAll(type);
    EXPECT_EQ(mac.eventTaps.enabledCount(), 0);
    mac.scheduler.runReady();
    EXPECT_EQ(mac.eventTaps.enabledCount(), 1);
    EXPECT_EQ(logLines().back(), std::string{"input notice: Re-enabled the keyboard event tap "
                                             "after "} +
                                     reason + ".");
  }
}

TEST_F(KeyboardEventTapControllerTest, AnAnnouncementOfAnOlderTapDoesNothing) {
  controller().startEventTap();
  mac.eventTaps.disableAll(timeout);
  controller().stopEventTap();
  controller().startEventTap();
  mac.scheduler.runReady();
  EXPECT_THAT(logLines(), ElementsAre());
  mac.eventTaps.disableAll(timeout);
  controller().stopEventTap();
  mac.scheduler.runReady();
  EXPECT_EQ(mac.eventTaps.enabledCount(), 0);
  EXPECT_THAT(logLines(), ElementsAre());
}

// The system calls it disabled while it is being stopped, and another one is in place before
// anybody gets to that.
TEST_F(KeyboardEventTapControllerTest, ATapThatIsStoppedOnPurposeIsNotRepaired) {
  controller().startEventTap();
  controller().stopEventTap();
  mac.scheduler.runReady();
  EXPECT_EQ(mac.eventTaps.enabledCount(), 0);
  controller().startEventTap();
  controller().stopEventTap();
  controller().startEventTap();
  mac.scheduler.runReady();
  EXPECT_THAT(logLines(), ElementsAre());
  expectOne();
}

TEST_F(KeyboardEventTapControllerTest, RevivingATapThatStaysDeadEndsItAndItsWorker) {
  controller().startEventTap();
  mac.eventTaps.disableAll(0);
  mac.faults.fail(PortCall::enableEventTap, 1);
  EXPECT_TRUE(controller().reviveEventTap());
  expectOne();
}

TEST_F(KeyboardEventTapControllerTest, RebuildsATapThatWillNotBeEnabled) {
  controller().startEventTap();
  mac.eventTaps.disableAll(0);
  mac.faults.fail(PortCall::enableEventTap, 1);
  mac.trace.start();
  controller().recoverEventTap(timeout);
  EXPECT_THAT(mac.trace.take(),
              ElementsAre("enable-event-tap", "disable event tap", "invalidate event tap",
                          "create-event-tap", "create-run-loop-source",
                          "start thread app.keyrow.Keyrow.KeyboardEventTap", "enable-event-tap"));
  EXPECT_THAT(logLines(),
              ElementsAre("input notice: Rebuilt the keyboard event tap after timeout."));
  EXPECT_EQ(mac.eventTaps.enabledCount(), 1);
  controller().stopEventTap();
  expectNone();
}

TEST_F(KeyboardEventTapControllerTest, SaysWhenItCannotRecover) {
  controller().startEventTap();
  mac.eventTaps.disableAll(0);
  mac.faults.fail(PortCall::enableEventTap, 1);
  mac.faults.fail(PortCall::createEventTap, 1);
  controller().recoverEventTap(timeout);
  EXPECT_THAT(logLines(),
              ElementsAre("input error: Failed to recover the keyboard event tap after timeout."));
  expectNone();
}

TEST_F(KeyboardEventTapControllerTest, RecoveringWhatWasStoppedBuildsIt) {
  controller().recoverEventTap(timeout);
  EXPECT_THAT(logLines(),
              ElementsAre("input notice: Rebuilt the keyboard event tap after timeout."));
  expectOne();
}

TEST_F(KeyboardEventTapControllerTest, TheEndOfTheProcessLeavesNothing) {
  controller().startEventTap();
  process.reset();
  EXPECT_TRUE(mac.openHandles.all().empty());
  EXPECT_EQ(mac.eventTaps.enabledCount(), 0);
}

}  // namespace
}  // namespace keyrow::sim
