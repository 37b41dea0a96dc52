#include "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>
#include <vector>

#include "platform/macos/tests/Eventually.h"

namespace keyrow::macos {
namespace {

using namespace std::chrono_literals;

class MacMainQueueTest : public ::testing::Test {
 protected:
  const std::unique_ptr<MainQueue> queue = makeMainQueue();
  std::vector<int> done;

  std::function<void()> work(int number) {
    return [this, number] { done.push_back(number); };
  }
};

TEST_F(MacMainQueueTest, DoesTheWorkLaterAndInItsOrder) {
  for (const int number : {1, 2, 3}) queue->async(work(number));
  EXPECT_TRUE(done.empty());
  EXPECT_TRUE(eventually([&] { return done.size() == 3; }));
  EXPECT_EQ(done, (std::vector{1, 2, 3}));
}

TEST_F(MacMainQueueTest, DoesTheWorkOfOtherThreadsOnTheMainThread) {
  bool isMainThread = false;
  bool isDone = false;
  std::thread{[&] {
    queue->async([&] {
      isMainThread = NSThread.isMainThread != NO;
      isDone = true;
    });
  }}.join();
  EXPECT_TRUE(eventually([&] { return isDone; }));
  EXPECT_TRUE(isMainThread);
}

TEST_F(MacMainQueueTest, DoesDelayedWorkUnlessItWasCalledOff) {
  auto kept = queue->after(20ms, work(1));
  auto calledOff = queue->after(10ms, work(2));
  calledOff = {};
  // Due after both.
  const auto last = queue->after(50ms, work(3));
  EXPECT_TRUE(eventually([&] { return !done.empty() && done.back() == 3; }));
  EXPECT_EQ(done, (std::vector{1, 3}));
}

TEST_F(MacMainQueueTest, IsServedWhileTheMainRunLoopIsRun) {
  const std::unique_ptr<MainRunLoop> runLoop = makeMainRunLoop();
  queue->async(work(1));
  // Each run ends with the first thing that happens, at the latest when its time is over.
  for (int time = 0; time < 500 && done.empty(); ++time) runLoop->run(20ms);
  EXPECT_EQ(done, (std::vector{1}));
}

TEST_F(MacMainQueueTest, GoesOnWhileWorkOfTheRunLoopWaits) {
  const std::unique_ptr<MainRunLoop> runLoop = makeMainRunLoop();
  bool isMainThread = false;
  runLoop->perform([&] {
    isMainThread = NSThread.isMainThread != NO;
    queue->async(work(1));
    // As an alert does.
    for (int time = 0; time < 500 && done.empty(); ++time) runLoop->run(20ms);
    done.push_back(2);
  });
  EXPECT_TRUE(eventually([&] { return done.size() == 2; }));
  EXPECT_EQ(done, (std::vector{1, 2}));
  EXPECT_TRUE(isMainThread);
}

}  // namespace
}  // namespace keyrow::macos
