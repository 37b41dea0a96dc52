#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "input/KeyboardEventTapController.h"
#include "tests/SimulatedMacTest.h"

namespace keyrow::sim {
namespace {

using ::testing::ElementsAre;

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

class EventTapWorkerTest : public SimulatedMacTest {
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

TEST_F(EventTapWorkerTest, TheTapSeesKeysAndModifiersAndNothingElse) {
  controller->startEventTap();
  // Bits 10, 11 and 12.
  EXPECT_EQ(taps.eventsOfInterest, 0x1C00U);
}

TEST_F(EventTapWorkerTest, SchedulesItsSourceBeforeItEnablesTheTap) {
  controller->startEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre());
  taps.bodies[0]();
  EXPECT_THAT(takeCalls(), ElementsAre("add source", "enable", "run", "remove source"));
}

TEST_F(EventTapWorkerTest, AGapLiesBehindAnAnnouncementAndBehindTheEnd) {
  controller->startEventTap();
  taps.whileRunning = [this] {
    EXPECT_EQ(taps.callback->tapReceived(keyEventType::keyDown, {}), TapVerdict::pass);
    EXPECT_EQ(taps.callback->tapReceived(keyEventType::tapDisabledByTimeout, {}),
              TapVerdict::swallow);
    EXPECT_THAT(handled, ElementsAre("event 10", "forget keys"));
    EXPECT_EQ(taps.callback->tapReceived(keyEventType::tapDisabledByUserInput, {}),
              TapVerdict::swallow);
  };
  taps.bodies[0]();
  EXPECT_THAT(handled, ElementsAre("event 10", "forget keys", "forget keys", "forget keys"));
}

TEST_F(EventTapWorkerTest, AGapLiesBehindATapThatIsFoundDisabledAndNoneBehindOneThatWorks) {
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

TEST_F(EventTapWorkerTest, AWorkerWhoseTapHasBeenReplacedDoesNothing) {
  controller->startEventTap();
  taps.isEnabled = false;
  controller->startEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre("enable"));
  taps.bodies[0]();
  EXPECT_THAT(takeCalls(), ElementsAre());
  taps.bodies[1]();
  EXPECT_THAT(takeCalls(), ElementsAre("add source", "enable", "run", "remove source"));
}

TEST_F(EventTapWorkerTest, AWorkerWhoseTapHasBeenReplacedLeavesNoRunLoopToStop) {
  controller->startEventTap();
  taps.isEnabled = false;
  controller->startEventTap();
  taps.bodies[0]();
  takeCalls();
  controller->stopEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre("disable", "invalidate"));
}

TEST_F(EventTapWorkerTest, AWorkerWhoseTapHasBeenStoppedDoesNothing) {
  controller->startEventTap();
  controller->stopEventTap();
  takeCalls();
  taps.bodies[0]();
  controller->stopEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre());
}

TEST_F(EventTapWorkerTest, AWorkerWithoutItsControllerDoesNothing) {
  controller->startEventTap();
  controller.reset();
  taps.bodies[0]();
  EXPECT_THAT(takeCalls(), ElementsAre());
}

TEST_F(EventTapWorkerTest, AWorkerWhoseControllerGoesWhileItRunsStillEnds) {
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

TEST_F(EventTapWorkerTest, AWorkerThatEndsLeavesTheRunLoopOfANewerOneAlone) {
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

TEST_F(EventTapWorkerTest, WhoeverWaitsForTheEndSeesWhatTheWorkerLeavesBehind) {
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

TEST_F(EventTapWorkerTest, AWorkerThatEndsForgetsItsRunLoop) {
  controller->startEventTap();
  taps.bodies[0]();
  takeCalls();
  controller->stopEventTap();
  EXPECT_THAT(takeCalls(), ElementsAre("disable", "invalidate"));
}

/// While the system works on a call, which may take its time, workers must get on.
TEST_F(EventTapWorkerTest, NobodyWaitsForACallIntoTheSystem) {
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
  taps.whileRunning = [&] { controller->recoverEventTap(keyEventType::tapDisabledByTimeout); };
  taps.bodies[1]();
  controller->stopEventTap();
  EXPECT_THAT(takeCalls(),
              ElementsAre("enable", "add source", "enable", "run", "enable", "stop", "disable",
                          "invalidate", "remove source", "disable", "invalidate"));
  EXPECT_GE(looks.size(), 14U);
}

}  // namespace
}  // namespace keyrow::sim
