#include "sim/machine/Scheduler.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace keyrow::sim {
namespace {

using namespace std::chrono_literals;
using ::testing::ElementsAre;

/// A scheduler whose work notes its name, and when it ran.
class SchedulerTest : public ::testing::Test {
 protected:
  Scheduler scheduler;
  std::vector<std::string> ran;
  std::vector<Scheduler::Duration> times;

  Scheduler::Ticket schedule(Scheduler::Duration delay, std::string name) {
    return scheduler.schedule(delay, note(std::move(name)));
  }

  std::function<void()> note(std::string name) {
    return [this, name = std::move(name)] {
      ran.push_back(name);
      times.push_back(scheduler.now());
    };
  }
};

TEST_F(SchedulerTest, StartsAtZeroAndPassesTimeOnlyInAdvance) {
  EXPECT_EQ(scheduler.now(), 0ns);
  scheduler.runReady();
  EXPECT_EQ(scheduler.now(), 0ns);
  scheduler.advance(3s);
  EXPECT_EQ(scheduler.now(), 3s);
  scheduler.advance(1ns);
  EXPECT_EQ(scheduler.now(), 3s + 1ns);
}

TEST_F(SchedulerTest, RunsWorkInTheOrderOfItsTime) {
  schedule(3s, "third");
  schedule(1s, "first");
  schedule(2s, "second");
  scheduler.advance(10s);
  EXPECT_THAT(ran, ElementsAre("first", "second", "third"));
  EXPECT_THAT(times, ElementsAre(1s, 2s, 3s));
  EXPECT_EQ(scheduler.now(), 10s);
}

TEST_F(SchedulerTest, RunsWorkOfOneTimeInTheOrderOfItsScheduling) {
  schedule(2s, "a");
  schedule(2s, "b");
  scheduler.advance(1s);
  schedule(1s, "c");
  schedule(1s, "d");
  scheduler.advance(1s);
  EXPECT_THAT(ran, ElementsAre("a", "b", "c", "d"));
}

TEST_F(SchedulerTest, SchedulingRunsNothing) {
  schedule(0s, "now");
  EXPECT_THAT(ran, ElementsAre());
}

TEST_F(SchedulerTest, AdvanceRunsWhatFallsOnItsEndAndLeavesTheRest) {
  schedule(1s, "at the end");
  schedule(1s + 1ns, "later");
  scheduler.advance(1s - 1ns);
  EXPECT_THAT(ran, ElementsAre());
  scheduler.advance(1ns);
  EXPECT_THAT(ran, ElementsAre("at the end"));
  scheduler.advance(1ns);
  EXPECT_THAT(ran, ElementsAre("at the end", "later"));
}

TEST_F(SchedulerTest, RunsWorkOnce) {
  schedule(1s, "once");
  scheduler.advance(1s);
  scheduler.advance(10s);
  scheduler.runReady();
  EXPECT_THAT(ran, ElementsAre("once"));
}

TEST_F(SchedulerTest, RunReadyRunsOnlyWhatIsDueNow) {
  schedule(0s, "now");
  schedule(1ns, "later");
  scheduler.runReady();
  EXPECT_THAT(ran, ElementsAre("now"));
  EXPECT_EQ(scheduler.now(), 0ns);
}

TEST_F(SchedulerTest, ANegativeDelayCountsAsNone) {
  scheduler.advance(5s);
  schedule(0s, "first");
  schedule(-1s, "second");
  scheduler.runReady();
  EXPECT_THAT(ran, ElementsAre("first", "second"));
  EXPECT_THAT(times, ElementsAre(5s, 5s));
}

TEST_F(SchedulerTest, WorkMayScheduleMoreWhichRunsInItsTurn) {
  scheduler.schedule(1s, [this] {
    note("outer")();
    schedule(0s, "at once");
    schedule(1s, "inside");
    schedule(5s, "beyond");
  });
  schedule(1s, "beside");
  schedule(3s, "behind");
  scheduler.advance(4s);
  EXPECT_THAT(ran, ElementsAre("outer", "beside", "at once", "inside", "behind"));
  EXPECT_THAT(times, ElementsAre(1s, 1s, 1s, 2s, 3s));
  scheduler.advance(2s);
  EXPECT_EQ(ran.back(), "beyond");
  EXPECT_EQ(times.back(), 6s);
}

TEST_F(SchedulerTest, RunReadyRunsWhatReadyWorkMakesReady) {
  scheduler.schedule(0s, [this] {
    note("outer")();
    schedule(0s, "inner");
    schedule(1ns, "later");
  });
  scheduler.runReady();
  EXPECT_THAT(ran, ElementsAre("outer", "inner"));
}

TEST_F(SchedulerTest, CancelledWorkDoesNotRun) {
  schedule(1s, "kept");
  const auto ticket = schedule(1s, "cancelled");
  scheduler.cancel(ticket);
  scheduler.advance(2s);
  EXPECT_THAT(ran, ElementsAre("kept"));
}

TEST_F(SchedulerTest, CancellingAgainOrTooLateDoesNothing) {
  const auto done = schedule(1s, "done");
  const auto cancelled = schedule(2s, "cancelled");
  scheduler.cancel(cancelled);
  scheduler.cancel(cancelled);
  scheduler.advance(1s);
  scheduler.cancel(done);
  schedule(0s, "next");
  scheduler.cancel(done);
  scheduler.advance(5s);
  EXPECT_THAT(ran, ElementsAre("done", "next"));
}

TEST_F(SchedulerTest, WorkMayCancelOtherWorkThatIsDueAtTheSameTime) {
  Scheduler::Ticket victim;
  scheduler.schedule(1s, [&] { scheduler.cancel(victim); });
  victim = schedule(1s, "victim");
  schedule(1s, "other");
  scheduler.advance(1s);
  EXPECT_THAT(ran, ElementsAre("other"));
}

TEST_F(SchedulerTest, WorkMayCancelItself) {
  Scheduler::Ticket self;
  self = scheduler.schedule(1s, [&] {
    scheduler.cancel(self);
    note("ran")();
  });
  scheduler.advance(1s);
  EXPECT_THAT(ran, ElementsAre("ran"));
}

TEST_F(SchedulerTest, CancelledWorkMayCancelMoreWhenItGoes) {
  const auto other = schedule(1s, "other");
  const auto ticket = scheduler.schedule(
      1s, [held = std::shared_ptr<void>{nullptr, [&](void*) { scheduler.cancel(other); }}] {});
  scheduler.cancel(ticket);
  scheduler.advance(1s);
  EXPECT_THAT(ran, ElementsAre());
}

TEST_F(SchedulerTest, LetsGoOfWorkThatRanOrWasCancelled) {
  auto token = std::make_shared<int>(0);
  scheduler.schedule(0s, [token] {});
  const auto ticket = scheduler.schedule(0s, [token] {});
  EXPECT_EQ(token.use_count(), 3);
  scheduler.cancel(ticket);
  EXPECT_EQ(token.use_count(), 2);
  scheduler.runReady();
  EXPECT_EQ(token.use_count(), 1);
}

TEST_F(SchedulerTest, WorkScheduledByAnotherThreadRunsInTheThreadThatAdvances) {
  std::thread::id ranIn;
  std::thread worker{[&] { scheduler.schedule(1s, [&] { ranIn = std::this_thread::get_id(); }); }};
  worker.join();
  EXPECT_EQ(ranIn, std::thread::id{});
  scheduler.advance(1s);
  EXPECT_EQ(ranIn, std::this_thread::get_id());
}

TEST_F(SchedulerTest, ManyThreadsMayScheduleWhileTimePasses) {
  constexpr int threadCount = 3;
  constexpr int workCount = 300;
  // Counted in the advancing thread only.
  std::vector<int> counts(threadCount);
  std::vector<std::thread> workers;
  for (int index = 0; index < threadCount; ++index) {
    workers.emplace_back([&, index] {
      for (int count = 0; count < workCount; ++count) {
        scheduler.schedule(1ms, [&counts, index] { ++counts[static_cast<std::size_t>(index)]; });
        scheduler.cancel(scheduler.schedule(1h, [] { FAIL(); }));
      }
    });
  }
  for (int count = 0; count < 100; ++count) scheduler.advance(1ms);
  for (auto& worker : workers) worker.join();
  scheduler.advance(1ms);
  EXPECT_THAT(counts, ElementsAre(workCount, workCount, workCount));
}

TEST_F(SchedulerTest, WorkThatLetsTimePassDoesNotTurnItBack) {
  scheduler.schedule(1s, [this] { scheduler.advance(1h); });
  scheduler.advance(2s);
  EXPECT_EQ(scheduler.now(), 1s + 1h);
}

}  // namespace
}  // namespace keyrow::sim
