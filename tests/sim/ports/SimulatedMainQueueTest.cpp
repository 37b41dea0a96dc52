#include "sim/ports/SimulatedMainQueue.h"

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

class SimulatedMainQueueTest : public ::testing::Test {
 protected:
  Scheduler scheduler;
  std::shared_ptr<MainThread> mainThread = std::make_shared<MainThread>();
  SimulatedMainQueue queue{scheduler, mainThread};
  std::vector<std::string> ran;

  std::function<void()> note(std::string name) {
    return [this, name = std::move(name)] { ran.push_back(name); };
  }
};

TEST_F(SimulatedMainQueueTest, RunsWorkLaterInTheOrderOfTheCalls) {
  queue.async(note("a"));
  queue.async([this] {
    note("b")();
    queue.async(note("d"));
  });
  queue.async(note("c"));
  EXPECT_THAT(ran, ElementsAre());
  scheduler.runReady();
  EXPECT_THAT(ran, ElementsAre("a", "b", "c", "d"));
}

TEST_F(SimulatedMainQueueTest, RunsADelayedCallOnceAfterItsDelay) {
  const auto call = queue.after(350ms, note("late"));
  scheduler.advance(350ms - 1ns);
  EXPECT_THAT(ran, ElementsAre());
  scheduler.advance(1ns);
  EXPECT_THAT(ran, ElementsAre("late"));
  scheduler.advance(1h);
  EXPECT_THAT(ran, ElementsAre("late"));
}

TEST_F(SimulatedMainQueueTest, DestroyingADelayedCallCancelsIt) {
  {
    const auto call = queue.after(350ms, note("cancelled"));
    scheduler.advance(300ms);
  }
  scheduler.advance(1h);
  EXPECT_THAT(ran, ElementsAre());
}

TEST_F(SimulatedMainQueueTest, ReplacingADelayedCallRestartsItsDelay) {
  auto call = queue.after(120ms, note("first"));
  scheduler.advance(100ms);
  call = queue.after(120ms, note("second"));
  scheduler.advance(119ms);
  EXPECT_THAT(ran, ElementsAre());
  scheduler.advance(1ms);
  EXPECT_THAT(ran, ElementsAre("second"));
}

TEST_F(SimulatedMainQueueTest, ADelayedCallMayReplaceItself) {
  DelayedCall call;
  call = queue.after(1s, [&] {
    note("first")();
    call = queue.after(1s, note("second"));
  });
  scheduler.advance(2s);
  EXPECT_THAT(ran, ElementsAre("first", "second"));
}

TEST_F(SimulatedMainQueueTest, WhatIsQueuedWhenTheProcessEndsNeverRuns) {
  queue.async(note("never"));
  auto cancelled = queue.after(1s, note("never"));
  const auto forgotten = queue.after(2s, note("never"));
  mainThread->end();
  cancelled = {};
  scheduler.advance(1h);
  EXPECT_THAT(ran, ElementsAre());
}

// The queue is serial: nothing of it runs before the alert has come back.
TEST_F(SimulatedMainQueueTest, AnAlertThatWasStartedFromItHoldsItUp) {
  bool isHeldUp = false;
  queue.async([&] { isHeldUp = mainThread->beginModal(); });
  queue.async(note("next"));
  const auto late = queue.after(1s, note("late"));
  scheduler.advance(1h);
  EXPECT_TRUE(isHeldUp);
  mainThread->deliver(note("an event"));
  EXPECT_THAT(ran, ElementsAre("an event"));
  mainThread->endModal(isHeldUp);
  EXPECT_THAT(ran, ElementsAre("an event", "next", "late"));
}

TEST_F(SimulatedMainQueueTest, AnAlertThatWasStartedFromTheRunLoopDoesNot) {
  bool isHeldUp = true;
  mainThread->performInDefaultMode([&] { isHeldUp = mainThread->beginModal(); });
  EXPECT_FALSE(isHeldUp);
  queue.async(note("next"));
  scheduler.runReady();
  EXPECT_THAT(ran, ElementsAre("next"));
  // But the run loop is not in its default mode.
  mainThread->performInDefaultMode(note("later"));
  EXPECT_THAT(ran, ElementsAre("next"));
  mainThread->endModal(isHeldUp);
  EXPECT_THAT(ran, ElementsAre("next", "later"));
}

TEST_F(SimulatedMainQueueTest, AnAlertOnTopOfAnotherHoldsTheQueueUpNoLongerThanThat) {
  queue.async([this] {
    const bool isHeldUp = mainThread->beginModal();
    const bool isHeldUpTwice = mainThread->beginModal();
    EXPECT_TRUE(isHeldUp);
    EXPECT_FALSE(isHeldUpTwice);
    queue.async(note("next"));
    scheduler.runReady();
    mainThread->endModal(isHeldUpTwice);
    EXPECT_THAT(ran, ElementsAre());
    mainThread->endModal(isHeldUp);
  });
  scheduler.runReady();
  EXPECT_THAT(ran, ElementsAre("next"));
}

TEST_F(SimulatedMainQueueTest, TakesWorkFromOtherThreads) {
  std::thread worker{[this] { queue.async(note("from the worker")); }};
  worker.join();
  EXPECT_THAT(ran, ElementsAre());
  scheduler.runReady();
  EXPECT_THAT(ran, ElementsAre("from the worker"));
}

}  // namespace
}  // namespace keyrow::sim
