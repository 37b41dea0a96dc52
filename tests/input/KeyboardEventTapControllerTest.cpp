#include "input/KeyboardEventTapController.h"

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
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

/// Taps whose threads get to their work only when the test lets them, and note what they do.
class DeferredEventTaps final : public EventTaps {
 public:
  std::vector<std::string> calls;
  /// Of the tap that was created last.
  std::uint64_t eventsOfInterest = 0;
  /// Of the threads, in the order in which they were started.
  std::deque<std::function<void()>> bodies;
  bool isEnabled = true;
  /// Runs in `run`, while the worker is in its run loop.
  std::function<void()> whileRunning = [] {};
  /// Runs in every call but `currentRunLoop`.
  std::function<void()> inCall = [] {};

  /// Of the tap that was created last.
  EventTapCallback* callback = nullptr;

  std::shared_ptr<EventTap> createTap(std::uint64_t events,
                                      EventTapCallback& itsCallback) override {
    eventsOfInterest = events;
    callback = &itsCallback;
    inCall();
    return std::make_shared<Tap>(*this);
  }
  std::shared_ptr<RunLoopSource> createRunLoopSource(EventTap&) override {
    inCall();
    return std::make_shared<RunLoopSource>();
  }
  std::shared_ptr<RunLoop> currentRunLoop() override { return std::make_shared<Loop>(*this); }
  void startThread(std::string_view, std::function<void()> body) override {
    bodies.push_back(std::move(body));
    inCall();
  }

 private:
  void note(std::string call) {
    {
      const std::scoped_lock guard{lock_};
      calls.push_back(std::move(call));
    }
    inCall();
  }

  /// Guards `calls` while threads run.
  std::mutex lock_;

  struct Tap final : EventTap {
    explicit Tap(DeferredEventTaps& itsOwner) : owner{itsOwner} {}
    void setEnabled(bool enabled) override { owner.note(enabled ? "enable" : "disable"); }
    bool isEnabled() override {
      owner.inCall();
      return owner.isEnabled;
    }
    void invalidate() override { owner.note("invalidate"); }
    DeferredEventTaps& owner;
  };
  struct Loop final : RunLoop {
    explicit Loop(DeferredEventTaps& itsOwner) : owner{itsOwner} {}
    void addSource(RunLoopSource&) override { owner.note("add source"); }
    void removeSource(RunLoopSource&) override { owner.note("remove source"); }
    void run() override {
      owner.note("run");
      std::exchange(owner.whileRunning, [] {})();
    }
    void perform(std::function<void()> work) override { work(); }
    void stop() override { owner.note("stop"); }
    DeferredEventTaps& owner;
  };
};

/// Notes what it is told.
struct NotingHandler final : TappedEventHandler {
  explicit NotingHandler(std::vector<std::string>& itsCalls) : calls{itsCalls} {}
  TapVerdict handleTappedEvent(std::uint32_t type, const KeyEvent&) noexcept override {
    calls.push_back("event " + std::to_string(type));
    return TapVerdict::pass;
  }
  void forgetKeys() noexcept override { calls.emplace_back("forget keys"); }
  std::vector<std::string>& calls;
};

class WorkerTest : public SimulatedMacTest {
 protected:
  DeferredEventTaps taps;
  /// What the handlers were told.
  std::vector<std::string> handled;
  std::optional<KeyboardEventTapController> controller{
      std::in_place, KeyboardEventTapController::Uses{
                         .eventTaps = taps,
                         .mainQueue = process->platform().mainQueue,
                         .makeHandler = [this] { return std::make_shared<NotingHandler>(handled); },
                         .tapWasDisabled = [](std::uint32_t) {},
                         .inputLog = keyrow().diagnosticsLog().logger(LogCategory::input)}};

  std::vector<std::string> takeCalls() { return std::exchange(taps.calls, {}); }
};

TEST_F(WorkerTest, TheTapSeesKeysAndModifiersAndNothingElse) {
  controller->startEventTap();
  // Bits 10, 11 and 12.
  EXPECT_EQ(taps.eventsOfInterest, 0x1C00U);
}

TEST_F(WorkerTest, SchedulesItsSourceBeforeItEnablesTheTap) {
  controller->startEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre());
  taps.bodies[0]();
  EXPECT_THAT(takeCalls(), ElementsAre("add source", "enable", "run", "remove source"));
}

TEST_F(WorkerTest, AGapLiesBehindAnAnnouncementAndBehindTheEnd) {
  controller->startEventTap();
  taps.whileRunning = [this] {
    EXPECT_EQ(taps.callback->tapReceived(keyEventType::keyDown, {}), TapVerdict::pass);
    EXPECT_EQ(taps.callback->tapReceived(timeout, {}), TapVerdict::swallow);
    EXPECT_THAT(handled, ElementsAre("event 10", "forget keys"));
    EXPECT_EQ(taps.callback->tapReceived(keyEventType::tapDisabledByUserInput, {}),
              TapVerdict::swallow);
  };
  taps.bodies[0]();
  EXPECT_THAT(handled, ElementsAre("event 10", "forget keys", "forget keys", "forget keys"));
}

TEST_F(WorkerTest, AGapLiesBehindATapThatIsFoundDisabledAndNoneBehindOneThatWorks) {
  controller->startEventTap();
  taps.whileRunning = [this] {
    controller->startEventTap();
    EXPECT_THAT(handled, ElementsAre());
    taps.isEnabled = false;
    controller->reviveEventTap();
    EXPECT_THAT(handled, ElementsAre("forget keys"));
  };
  taps.bodies[0]();
}

TEST_F(WorkerTest, AWorkerWhoseTapHasBeenReplacedDoesNothing) {
  controller->startEventTap();
  taps.isEnabled = false;
  controller->startEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre("enable"));
  taps.bodies[0]();
  EXPECT_THAT(takeCalls(), ElementsAre());
  taps.bodies[1]();
  EXPECT_THAT(takeCalls(), ElementsAre("add source", "enable", "run", "remove source"));
}

TEST_F(WorkerTest, AWorkerWhoseTapHasBeenReplacedLeavesNoRunLoopToStop) {
  controller->startEventTap();
  taps.isEnabled = false;
  controller->startEventTap();
  taps.bodies[0]();
  takeCalls();
  controller->stopEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre("disable", "invalidate"));
}

TEST_F(WorkerTest, AWorkerWhoseTapHasBeenStoppedDoesNothing) {
  controller->startEventTap();
  controller->stopEventTap();
  takeCalls();
  taps.bodies[0]();
  controller->stopEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre());
}

TEST_F(WorkerTest, AWorkerWithoutItsControllerDoesNothing) {
  controller->startEventTap();
  controller.reset();
  taps.bodies[0]();
  EXPECT_THAT(takeCalls(), ElementsAre());
}

TEST_F(WorkerTest, AWorkerWhoseControllerGoesWhileItRunsStillEnds) {
  controller->startEventTap();
  taps.whileRunning = [this] { controller.reset(); };
  taps.bodies[0]();
  EXPECT_THAT(takeCalls(), ElementsAre("add source", "enable", "run", "remove source"));
}

/// A worker on a thread of its own that has got into its run loop, until it is let out.
class RunningWorker {
 public:
  RunningWorker(DeferredEventTaps& taps, std::size_t index) {
    taps.whileRunning = [this] {
      isRunning_.set_value();
      mayEnd_.get_future().wait();
    };
    thread_ = std::thread{taps.bodies[index]};
    isRunning_.get_future().wait();
  }

  void end() {
    mayEnd_.set_value();
    thread_.join();
  }

 private:
  std::promise<void> isRunning_, mayEnd_;
  std::thread thread_;
};

TEST_F(WorkerTest, AWorkerThatEndsLeavesTheRunLoopOfANewerOneAlone) {
  controller->startEventTap();
  RunningWorker oldWorker{taps, 0};
  taps.isEnabled = false;
  controller->startEventTap();
  RunningWorker newWorker{taps, 1};
  oldWorker.end();
  takeCalls();
  controller->stopEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre("stop", "disable", "invalidate"));
  newWorker.end();
}

TEST_F(WorkerTest, WhoeverWaitsForTheEndSeesWhatTheWorkerLeavesBehind) {
  controller->startEventTap();
  RunningWorker worker{taps, 0};
  auto ending = std::async(std::launch::async, [this] {
    controller->stopEventTapAndWait();
    return handled;
  });
  EXPECT_EQ(ending.wait_for(std::chrono::milliseconds{50}), std::future_status::timeout);
  worker.end();
  EXPECT_THAT(ending.get(), ElementsAre("forget keys"));
}

TEST_F(WorkerTest, AWorkerThatEndsForgetsItsRunLoop) {
  controller->startEventTap();
  taps.bodies[0]();
  takeCalls();
  controller->stopEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre("disable", "invalidate"));
}

/// While the system works on a call, which may take its time, workers must get on.
TEST_F(WorkerTest, NobodyWaitsForACallIntoTheSystem) {
  controller->startEventTap();
  taps.isEnabled = false;
  controller->startEventTap();
  // Its tap has been replaced, so it only looks at the controller's state.
  const auto staleWorker = taps.bodies[0];
  std::vector<std::future<void>> looks;
  taps.inCall = [&] {
    looks.push_back(std::async(std::launch::async, staleWorker));
    EXPECT_EQ(looks.back().wait_for(std::chrono::seconds{10}), std::future_status::ready);
  };
  taps.whileRunning = [&] { controller->recoverEventTap(timeout); };
  taps.bodies[1]();
  controller->stopEventTap();
  EXPECT_THAT(takeCalls(),
              ElementsAre("enable", "add source", "enable", "run", "enable", "stop", "disable",
                          "invalidate", "remove source", "disable", "invalidate"));
  EXPECT_GE(looks.size(), 14U);
}

}  // namespace
}  // namespace keyrow::sim
