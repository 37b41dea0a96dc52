#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <string>
#include <thread>

#include "tests/input/KeyboardSourceMonitorFixture.h"

namespace keyrow::sim {
namespace {

using KeyboardSourceMonitorThreadTest = KeyboardSourceMonitorFixture;

TEST_F(KeyboardSourceMonitorThreadTest,
       AnswersAnotherThreadWhileInputsArriveAndMonitoringRestarts) {
  constexpr std::uint64_t rounds = 2'000;
  constexpr std::uint64_t ticksPerRound = 24'000;
  std::atomic<std::uint64_t> now{1'000'000'000};
  std::atomic<bool> isDone{false};
  std::atomic<std::uint64_t> answers{0};
  std::set<std::string> labels;

  std::thread worker{[&] {
    while (!isDone) {
      const auto source = monitor().source(now);
      if (!source) continue;
      labels.insert(source->inputSourceLabel(keyrow().settings().enhancedDiagnosticsEnabled()));
      ++answers;
    }
  }};

  const auto cached = makeKeyboard(1, {{"Product", "Cached"}, {"Transport", "USB"}});
  const auto uncached = makeKeyboard(std::nullopt, {{"Product", "Uncached"}});
  // Rounds on while the worker has not had its turn yet, but not for ever.
  const auto goesOn = [&](std::uint64_t round) {
    return round < rounds || (answers == 0 && round < 1'000 * rounds);
  };
  for (std::uint64_t round = 0; goesOn(round); ++round) {
    input(cached, now += ticksPerRound);
    input(uncached, now += ticksPerRound);
    if (round % 16 == 0) keyrow().settings().setEnhancedDiagnosticsEnabled(round % 32 == 0);
    if (round % 64 == 63) {
      monitor().stopMonitoring();
      monitor().startMonitoring();
    }
  }
  isDone = true;
  worker.join();

  EXPECT_GT(answers, 0U);
  // Whatever the worker was told is one of the two keyboards, whole.
  for (const auto& label : labels) {
    EXPECT_TRUE(label == "external keyboard" || label == "unknown keyboard" ||
                label == "external keyboard (Cached), transport=USB" ||
                label == "unknown keyboard (Uncached)")
        << label;
  }
  EXPECT_EQ(mac.openHandles.count("HidManager"), 1);
}

TEST_F(KeyboardSourceMonitorThreadTest, WhatItAnsweredOutlivesTheMonitoring) {
  input(namedKeyboard("A"), 1'000);
  std::shared_ptr<const KeyboardDeviceSource> source;
  std::thread worker{[&] { source = monitor().source(1'000); }};
  worker.join();
  monitor().stopMonitoring();
  ASSERT_NE(source, nullptr);
  EXPECT_EQ(source->product, "A");
}

}  // namespace
}  // namespace keyrow::sim
