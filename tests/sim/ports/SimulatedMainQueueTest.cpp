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

TEST_F(SimulatedMainQueueTest, TakesWorkFromOtherThreads) {
  std::thread worker{[this] { queue.async(note("from the worker")); }};
  worker.join();
  EXPECT_THAT(ran, ElementsAre());
  scheduler.runReady();
  EXPECT_THAT(ran, ElementsAre("from the worker"));
}

}  // namespace
}  // namespace keyrow::sim
